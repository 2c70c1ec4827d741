// A statement as a value: fixed text with typed literals between. Rendered by a dialect, which owns every literal and
// every form of statement in which the engines differ, it is the exact SQL text; a provider that prepares binds the
// literals instead and caches by ParameterText. Values never enter the fixed text.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "base/Calendar.h"
#include "base/Currency.h"

namespace tolvan {

class SqlDialect;

/// How several statements travel to an engine in one call.
enum class BatchForm {
  OneByOne,       ///< an engine that takes one statement at a time
  Separated,      ///< in one text, separated by semicolons: queries always, changes only inside a transaction
  WithRowCounts,  ///< in one text, each change followed by a query for the number of rows that it affected
};

/// What sets a database engine apart beyond its SQL text. Nobody asks which engine it is: whoever needs to know
/// something asks for that something here. Every dialect carries the traits of its engine.
struct EngineTraits {
  std::string_view name{};    ///< as `motor` in tolvan.ini, in lower case
  std::string_view schema{};  ///< the script that creates the tables
  bool isFile = false;        ///< the database is a file of this machine, opened in this process

  BatchForm batchForm = BatchForm::OneByOne;
  std::size_t statementsPerCall = 2'000;   ///< a call is a round trip; a file engine's stay in the processor's cache
  std::size_t rowsPerTransaction = 4'000;  ///< others work on a server too; large ones keep a file's pages hot
  bool smallIntegersAreBooleans = false;   ///< the schema declares its booleans SMALLINT, and nothing else
  /// To be appended to the ODBC connection string; each option ends in ";".
  std::string_view driverOptions{};
  /// Limits the time of statements, with "?" for the seconds; run once for each connection. Empty: the driver's own
  /// way.
  std::string_view statementLimitSetting{};
};

/// For std::visit: one lambda for each type that a value may have.
template <class... Cases>
struct Match : Cases... {
  using Cases::operator()...;
};
template <class... Cases>
Match(Cases...) -> Match<Cases...>;  // the compiler of the checks does not deduce it by itself

/// std::monostate is NULL; text is UTF-8.
using SqlLiteral = std::variant<std::monostate, bool, std::int64_t, Currency, DateTime, std::string>;

class SqlStatement {
 public:
  SqlStatement() = default;
  explicit SqlStatement(std::string_view fixedText) { Sql(fixedText); }

  /// Appends text of the program's own. It must hold no "?" outside what Literal appends.
  SqlStatement& Sql(std::string_view fixedText);

  /// Appends a value as a literal.
  SqlStatement& Text(std::string_view value) { return Literal(std::string(value)); }
  SqlStatement& Boolean(bool value) { return Literal(value); }
  SqlStatement& Integer(std::int64_t value) { return Literal(value); }
  SqlStatement& Money(Currency value) { return Literal(value); }
  SqlStatement& Moment(DateTime value) { return Literal(value); }
  SqlStatement& Null() { return Literal(std::monostate()); }
  SqlStatement& Literal(SqlLiteral value);

  /// Appends another statement, its literals included.
  SqlStatement& Append(const SqlStatement& other);

  /// Puts another text in the place of the literal at `index`, which is below Literals().size(): for a statement that
  /// runs once per row, whose memory is used again.
  void ReplaceText(std::size_t index, std::string_view value);

  /// The same for a value of any type.
  void ReplaceLiteral(std::size_t index, SqlLiteral value) { literals_[index] = std::move(value); }

  /// The text with "?" in the place of every literal.
  const std::string& ParameterText() const { return parameterText_; }
  std::span<const SqlLiteral> Literals() const { return literals_; }

  /// The exact text, every literal written by `dialect`. Throws HostError InvalidValue for a text with a NUL.
  std::string Render(const SqlDialect& dialect) const;

 private:
  std::string parameterText_;
  std::vector<SqlLiteral> literals_;
  std::vector<std::size_t> positions_;  // of each "?" in parameterText_
};

/// Owns every literal and every form of statement in which the engines differ.
class SqlDialect {
 public:
  virtual ~SqlDialect() = default;

  /// They live as long as the program.
  virtual const EngineTraits& Engine() const = 0;

  /// The text of a literal, ready to stand in a statement. Throws HostError InvalidValue for a text that the engine
  /// cannot hold (one with a NUL).
  virtual std::string Literal(const SqlLiteral& value) const = 0;

  std::string LiteralTrue() const { return Literal(true); }
  std::string LiteralFalse() const { return Literal(false); }

  /// The expression for the server's own date and time of day: GETDATE() on SQL Server.
  virtual std::string CurrentMoment() const = 0;

  /// One statement that inserts the row unless its key is there already; it affects one row or none, and hides no other
  /// failure than the key's. `table` and `keyTable` are the table as the INSERT and as the existence test write it;
  /// `columns` and `values` go together, and values[0] is the key, columns[0] its column. On SQL Server the text is
  /// "IF NOT EXISTS (SELECT * FROM keyTable WHERE key = value) INSERT INTO table ( columns ) VALUES (values ) ".
  /// Access has no such statement: there it is an INSERT … SELECT that finds no row when the key exists.
  virtual SqlStatement InsertUnlessPresent(std::string_view table, std::string_view keyTable,
                                           std::span<const std::string_view> columns,
                                           std::span<const SqlLiteral> values) const = 0;

  /// The same for many rows in one statement, which returns the keys of the rows that it inserted and fails whole.
  /// `values` are the rows one after the other, at least one; no key may come twice, and a column holds values of one
  /// type or NULL. Nothing when the engine has no such form, or takes single statements as fast.
  virtual std::optional<SqlStatement> InsertManyUnlessPresent(std::string_view /*table*/,
                                                              std::span<const std::string_view> /*columns*/,
                                                              std::span<const SqlLiteral> /*values*/) const {
    return std::nullopt;
  }
};

}  // namespace tolvan
