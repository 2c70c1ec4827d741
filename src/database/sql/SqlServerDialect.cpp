#include "database/sql/SqlServerDialect.h"

#include <algorithm>

#include "database/sql/Schemas.h"

namespace tolvan {

const EngineTraits& SqlServerDialect::Engine() const {
  static const EngineTraits traits{
      .name = "sqlserver", .schema = data::sqlServerSchema, .batchForm = BatchForm::WithRowCounts};
  return traits;
}

std::string SqlServerDialect::CurrentMoment() const {
  return "GETDATE()";
}

SqlStatement SqlServerDialect::InsertUnlessPresent(std::string_view table, std::string_view keyTable,
                                                   std::span<const std::string_view> columns,
                                                   std::span<const SqlLiteral> values) const {
  SqlStatement statement("IF NOT EXISTS (SELECT * FROM ");
  statement.Sql(keyTable).Sql(" WHERE ").Sql(columns[0]).Sql(" = ").Literal(values[0]).Sql(") ");
  AppendInsertInto(statement, table, columns);
  statement.Sql(" VALUES (");
  AppendValues(statement, values);
  return statement.Sql(" ) ");
}

std::string SqlServerDialect::BooleanLiteral(bool value) const {
  return value ? "1" : "0";
}

std::string SqlServerDialect::MomentLiteral(const DateTime& moment) const {
  return "'" + moment.ToIsoText('T') + "'";
}

std::string SqlServerDialect::TextLiteral(std::string_view text) const {
  const bool ascii = std::ranges::all_of(text, [](char c) { return static_cast<unsigned char>(c) < 0x80; });
  const std::string quoted = SqlDialectBase::TextLiteral(text);
  return ascii ? quoted : "N" + quoted;
}

}  // namespace tolvan
