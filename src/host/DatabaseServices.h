// Recordsets, statements and transactions on the host's database, and the values that rows hold. Every failure is a
// HostError. One connection, used from one thread at a time. No call waits longer than the configured limit.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "base/Calendar.h"
#include "base/Currency.h"
#include "host/HostError.h"
#include "host/SqlStatement.h"

namespace tolvan {

/// A number that the database delivers as exact decimal text, such as a column of type DECIMAL.
struct DecimalText {
  std::string text;
  bool operator==(const DecimalText&) const = default;
};

/// One field of a row, in the shape that the database delivers it. std::monostate is NULL.
using FieldValue = std::variant<std::monostate, bool, std::int64_t, double, DecimalText, DateTime, std::string>;

inline bool IsNull(const FieldValue& value) {
  return std::holds_alternative<std::monostate>(value);
}

/// NULL is "", a boolean "True" or "False", a date its ISO text, a number its ordinary decimal form.
std::string TextOf(const FieldValue& value);

/// Half-even to four decimals; a text is read as a decimal. Nothing for NULL and for what is no number or does not fit.
std::optional<Currency> CurrencyOf(const FieldValue& value);

/// A whole number; a fraction is cut off. Nothing for NULL and for what is no number or does not fit.
std::optional<std::int64_t> IntegerOf(const FieldValue& value);

/// Not zero, or the text "True" in any casing. Nothing for NULL and for other texts that are no numbers.
std::optional<bool> BooleanOf(const FieldValue& value);

/// A forward walk over the rows of a query. A recordset just opened stands on its first row, or is at its end.
class Recordset {
 public:
  virtual ~Recordset() = default;

  /// True past the last row; then there are no values to read.
  virtual bool AtEnd() const = 0;

  /// Goes to the next row. Must not be called at the end. Throws HostError when the database fails on the way; the
  /// recordset is then at its end.
  virtual void MoveNext() = 0;

  virtual std::size_t FieldCount() const = 0;

  /// The place of a column, found without regard to case; nothing when there is none.
  virtual std::optional<std::size_t> FindField(std::string_view name) const = 0;

  /// The value of the field in the current row. `index` is below FieldCount.
  virtual FieldValue Value(std::size_t index) const = 0;

  /// TextOf(Value(index)), without a copy where the provider can. Valid until the next call on this recordset.
  virtual std::string_view Text(std::size_t index) const = 0;

  /// By name. Throws HostError Statement when there is no such column.
  FieldValue Value(std::string_view name) const { return Value(RequireField(name)); }

  /// FindField, or HostError Statement.
  std::size_t RequireField(std::string_view name) const;
};

/// An open transaction. Its destructor rolls back, without throwing, unless Commit succeeded. After a statement has
/// failed, every further one throws that same error until the rollback: some engines have rolled back by themselves
/// then, and would keep it at once.
class Transaction {
 public:
  virtual ~Transaction() = default;

  /// Makes the work durable. Throws HostError when that is not certain; then nothing was kept, unless the kind is
  /// OutcomeUnknown: the server may have committed before the connection failed. Never commits after a statement of
  /// this transaction has failed: that throws too, and rolls back.
  virtual void Commit() = 0;

  /// Undoes the work at once. Throws nothing; a second call does nothing.
  virtual void Rollback() noexcept = 0;
};

/// The outcome of one statement of a batch: exactly one of the three is there.
struct BatchResult {
  std::optional<std::int64_t> affectedRows;
  std::unique_ptr<Recordset> rows;
  std::optional<HostError> error;
};

class DatabaseServices {
 public:
  virtual ~DatabaseServices() = default;

  /// Runs a query. Never returns null. The recordset must be gone before the database services are.
  virtual std::unique_ptr<Recordset> OpenRecordset(const SqlStatement& statement) = 0;

  /// Runs a statement that returns no rows; the result is the number of rows inserted, changed or deleted, never
  /// negative.
  virtual std::int64_t Execute(const SqlStatement& statement) = 0;

  /// Runs all statements in order, in as few round trips as the engine allows, with one result each. A failing
  /// statement does not stop those after it, except in a transaction: there what follows is not run and carries the
  /// same error. Outside a transaction every statement stands alone. Rows are read whole before this returns.
  virtual std::vector<BatchResult> RunBatch(std::span<const SqlStatement> statements) = 0;

  /// Whether a comparison finds a code of the host's tables in any casing of any letter. Where it does not, it does for
  /// ASCII letters.
  virtual bool FindsCodesInAnyCase() const { return true; }

  /// Begins a transaction. Throws HostError when one is open already (they do not nest).
  virtual std::unique_ptr<Transaction> BeginTransaction() = 0;
};

}  // namespace tolvan
