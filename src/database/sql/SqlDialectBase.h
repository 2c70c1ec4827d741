// What the dialects share: the literals on which all engines agree, and the parts from which their INSERT forms are
// made. A dialect writes only what its engine has of its own.
#pragma once

#include <string>
#include <string_view>

#include "host/SqlStatement.h"

namespace tolvan {

class SqlDialectBase : public SqlDialect {
 public:
  std::string Literal(const SqlLiteral& value) const final;

 protected:
  virtual std::string BooleanLiteral(bool value) const = 0;
  virtual std::string MomentLiteral(const DateTime& moment) const = 0;

  /// `text` holds no NUL. The common form doubles every apostrophe.
  virtual std::string TextLiteral(std::string_view text) const;

  /// Appends "INSERT INTO table ( column, column )".
  static void AppendInsertInto(SqlStatement& statement, std::string_view table,
                               std::span<const std::string_view> columns);

  /// Appends the values with ", " between.
  static void AppendValues(SqlStatement& statement, std::span<const SqlLiteral> values);

  /// "INSERT INTO table ( columns ) VALUES (values) ON CONFLICT (key) DO NOTHING", for the engines that have it.
  static SqlStatement InsertOnConflictDoNothing(std::string_view table, std::span<const std::string_view> columns,
                                                std::span<const SqlLiteral> values);
};

/// Throws HostError InvalidValue when the text holds a NUL, which no engine keeps.
void RequireNoNul(std::string_view text);

}  // namespace tolvan
