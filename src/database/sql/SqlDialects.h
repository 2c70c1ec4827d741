// The dialects of the engines. What they agree on stands in their base: literals, and the parts from which the forms of
// INSERT are made. A dialect writes only what its engine has of its own.
#pragma once

#include <string>
#include <string_view>

#include "host/SqlStatement.h"

namespace tolvan {

/// How an engine writes what is a matter of spelling only.
struct SqlSpelling {
  std::string_view currentMoment;  ///< see SqlDialect::CurrentMoment
  std::string_view trueLiteral = "1";
  std::string_view falseLiteral = "0";
  char momentQuote = '\'';
  char timeSeparator = ' ';  ///< between the date and the time of day
};

class SqlDialectBase : public SqlDialect {
 public:
  std::string Literal(const SqlLiteral& value) const final;
  std::string CurrentMoment() const final { return std::string(spelling_.currentMoment); }

  /// "INSERT INTO table ( columns ) VALUES (values) ON CONFLICT (key) DO NOTHING", for the engines that have it.
  SqlStatement InsertUnlessPresent(std::string_view table, std::string_view keyTable,
                                   std::span<const std::string_view> columns,
                                   std::span<const SqlLiteral> values) const override;

 protected:
  explicit SqlDialectBase(const SqlSpelling& spelling) : spelling_(spelling) {}

  /// `text` holds no NUL. The common form doubles every apostrophe.
  virtual std::string TextLiteral(std::string_view text) const;

  /// Appends "INSERT INTO table ( column, column )".
  static void AppendInsertInto(SqlStatement& statement, std::string_view table,
                               std::span<const std::string_view> columns);

  /// Appends the values with ", " between.
  static void AppendValues(SqlStatement& statement, std::span<const SqlLiteral> values);

 private:
  SqlSpelling spelling_;
};

/// The embedded engine: booleans 1 and 0, dates as ISO text, which is also how its columns hold them.
class SqliteDialect : public SqlDialectBase {
 public:
  SqliteDialect() : SqlDialectBase({.currentMoment = "datetime('now','localtime')"}) {}
  const EngineTraits& Engine() const override;
};

/// SQL Server: BIT, dates with the T that no language setting of the server reinterprets, N'…' only where it is needed.
/// A text that holds only ASCII stays without the N, so that an index on a VARCHAR column of a host's older database is
/// still used and the statements read as they always have.
class SqlServerDialect final : public SqlDialectBase {
 public:
  SqlServerDialect() : SqlDialectBase({.currentMoment = "GETDATE()", .timeSeparator = 'T'}) {}
  const EngineTraits& Engine() const override;
  SqlStatement InsertUnlessPresent(std::string_view table, std::string_view keyTable,
                                   std::span<const std::string_view> columns,
                                   std::span<const SqlLiteral> values) const override;

 protected:
  std::string TextLiteral(std::string_view text) const override;
};

/// PostgreSQL: booleans are SMALLINT 1 and 0, so that a comparison with a number is valid there too; TIMESTAMP(0)
/// without a time zone. Needs standard_conforming_strings, which is on unless somebody turned it off.
class PostgreSqlDialect final : public SqlDialectBase {
 public:
  PostgreSqlDialect() : SqlDialectBase({.currentMoment = "LOCALTIMESTAMP"}) {}
  const EngineTraits& Engine() const override;

  /// "INSERT INTO table ( columns ) SELECT … FROM unnest(array, array) … ON CONFLICT (key) DO NOTHING RETURNING key":
  /// an array is one literal, which the server reads several times faster than as many rows of VALUES.
  std::optional<SqlStatement> InsertManyUnlessPresent(std::string_view table, std::span<const std::string_view> columns,
                                                      std::span<const SqlLiteral> values) const override;
};

/// Access: True and False, dates between #. The ISO order inside # is read the same way under every regional setting.
class AccessDialect final : public SqlDialectBase {
 public:
  AccessDialect()
      : SqlDialectBase({.currentMoment = "Now()", .trueLiteral = "True", .falseLiteral = "False", .momentQuote = '#'}) {
  }
  const EngineTraits& Engine() const override;
  SqlStatement InsertUnlessPresent(std::string_view table, std::string_view keyTable,
                                   std::span<const std::string_view> columns,
                                   std::span<const SqlLiteral> values) const override;
};

/// Throws HostError InvalidValue when the text holds a NUL, which no engine keeps.
void RequireNoNul(std::string_view text);

}  // namespace tolvan
