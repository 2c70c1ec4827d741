#include "database/sql/AccessDialect.h"

#include "database/sql/Schemas.h"

namespace tolvan {

const EngineTraits& AccessDialect::Engine() const {
  static const EngineTraits traits{.name = "access", .schema = data::accessSchema};
  return traits;
}

std::string AccessDialect::CurrentMoment() const {
  return "Now()";
}

// Jet selects constants only FROM something: a count, which is one row always, and which the condition then drops when
// the key was found.
SqlStatement AccessDialect::InsertUnlessPresent(std::string_view table, std::string_view keyTable,
                                                std::span<const std::string_view> columns,
                                                std::span<const SqlLiteral> values) const {
  SqlStatement statement;
  AppendInsertInto(statement, table, columns);
  statement.Sql(" SELECT ");
  AppendValues(statement, values);
  statement.Sql(" FROM (SELECT COUNT(*) AS Presentes FROM ").Sql(keyTable).Sql(" WHERE ").Sql(columns[0]);
  return statement.Sql(" = ").Literal(values[0]).Sql(") AS Clave WHERE Clave.Presentes = 0");
}

std::string AccessDialect::BooleanLiteral(bool value) const {
  return value ? "True" : "False";
}

std::string AccessDialect::MomentLiteral(const DateTime& moment) const {
  return "#" + moment.ToIsoText() + "#";
}

}  // namespace tolvan
