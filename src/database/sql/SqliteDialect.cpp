#include "database/sql/SqliteDialect.h"

#include "database/sql/Schemas.h"

namespace tolvan {

const EngineTraits& SqliteDialect::Engine() const {
  static const EngineTraits traits{.name = "sqlite",
                                   .schema = data::sqliteSchema,
                                   .isFile = true,
                                   .statementsPerCall = 256,
                                   .rowsPerTransaction = 200'000};
  return traits;
}

std::string SqliteDialect::CurrentMoment() const {
  return "datetime('now','localtime')";
}

SqlStatement SqliteDialect::InsertUnlessPresent(std::string_view table, std::string_view /*keyTable*/,
                                                std::span<const std::string_view> columns,
                                                std::span<const SqlLiteral> values) const {
  return InsertOnConflictDoNothing(table, columns, values);
}

std::string SqliteDialect::BooleanLiteral(bool value) const {
  return value ? "1" : "0";
}

std::string SqliteDialect::MomentLiteral(const DateTime& moment) const {
  return "'" + moment.ToIsoText() + "'";
}

}  // namespace tolvan
