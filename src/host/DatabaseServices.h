// Recordsets, statements and transactions on the host's database. Every failure is a HostError. One connection, used
// from one thread at a time. No call waits longer than the configured limit.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <vector>

#include "host/HostError.h"
#include "host/Recordset.h"
#include "host/SqlStatement.h"

namespace tolvan {

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
  /// statement does not stop those behind it, except in a transaction: there what follows is not run and carries the
  /// same error. Outside a transaction every statement stands alone. Rows are read whole before this returns.
  virtual std::vector<BatchResult> RunBatch(std::span<const SqlStatement> statements) = 0;

  /// Whether a comparison finds a code of the host's tables in any casing of any letter. Where it does not, it does for
  /// ASCII letters.
  virtual bool FindsCodesInAnyCase() const { return true; }

  /// Begins a transaction. Throws HostError when one is open already (they do not nest).
  virtual std::unique_ptr<Transaction> BeginTransaction() = 0;
};

}  // namespace tolvan
