// Owns every literal and every form of statement in which the engines differ.
#pragma once

#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "host/EngineTraits.h"
#include "host/SqlStatement.h"

namespace tolvan {

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
  /// `values` are the rows one behind the other, at least one; no key may come twice, and a column holds values of one
  /// type or NULL. Nothing when the engine has no such form, or takes single statements as fast.
  virtual std::optional<SqlStatement> InsertManyUnlessPresent(std::string_view /*table*/,
                                                              std::span<const std::string_view> /*columns*/,
                                                              std::span<const SqlLiteral> /*values*/) const {
    return std::nullopt;
  }
};

}  // namespace tolvan
