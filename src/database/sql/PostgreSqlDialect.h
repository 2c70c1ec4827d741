// PostgreSQL: booleans are SMALLINT 1 and 0, so that a comparison with a number is valid there too; TIMESTAMP(0)
// without a time zone. Needs standard_conforming_strings, which is on unless somebody turned it off.
#pragma once

#include "database/sql/SqlDialectBase.h"

namespace tolvan {

class PostgreSqlDialect final : public SqlDialectBase {
 public:
  const EngineTraits& Engine() const override;
  std::string CurrentMoment() const override;
  SqlStatement InsertUnlessPresent(std::string_view table, std::string_view keyTable,
                                   std::span<const std::string_view> columns,
                                   std::span<const SqlLiteral> values) const override;
  /// "INSERT INTO table ( columns ) SELECT … FROM unnest(array, array) … ON CONFLICT (key) DO NOTHING RETURNING key":
  /// an array is one literal, which the server reads several times faster than as many rows of VALUES.
  std::optional<SqlStatement> InsertManyUnlessPresent(std::string_view table, std::span<const std::string_view> columns,
                                                      std::span<const SqlLiteral> values) const override;

 protected:
  std::string BooleanLiteral(bool value) const override;
  std::string MomentLiteral(const DateTime& moment) const override;
};

}  // namespace tolvan
