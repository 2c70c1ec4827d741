#include "platform/sql/PostgreSqlDialect.h"

namespace tolvan {

std::string PostgreSqlDialect::CurrentMoment() const {
  return "LOCALTIMESTAMP";
}

SqlStatement PostgreSqlDialect::InsertUnlessPresent(std::string_view table, std::string_view /*keyTable*/,
                                                    std::span<const std::string_view> columns,
                                                    std::span<const SqlLiteral> values) const {
  return InsertOnConflictDoNothing(table, columns, values);
}

std::string PostgreSqlDialect::BooleanLiteral(bool value) const {
  return value ? "1" : "0";
}

std::string PostgreSqlDialect::MomentLiteral(const DateTime& moment) const {
  return "'" + moment.ToIsoText() + "'";
}

}  // namespace tolvan
