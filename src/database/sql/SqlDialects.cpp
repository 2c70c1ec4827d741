#include "database/sql/SqlDialects.h"

#include <algorithm>

#include "base/Text.h"
#include "database/sql/SqlScript.h"
#include "host/HostError.h"

namespace tolvan {

void RequireNoNul(std::string_view text) {
  const std::size_t place = text.find('\0');
  if (place == std::string_view::npos) return;
  // What comes before it identifies the text; the character itself must not reach a message.
  throw HostError(HostErrorKind::InvalidValue, "el texto contiene un carácter nulo", std::string(text, 0, place) + "…");
}

std::string SqlDialectBase::Literal(const SqlLiteral& value) const {
  return std::visit(
      Match{[](std::monostate) { return std::string("NULL"); },
            [this](bool flag) { return std::string(flag ? spelling_.trueLiteral : spelling_.falseLiteral); },
            [](std::int64_t number) { return std::to_string(number); },
            [](Currency money) { return money.ToShortestText(); },
            [this](const DateTime& moment) {
              return spelling_.momentQuote + moment.ToIsoText(spelling_.timeSeparator) + spelling_.momentQuote;
            },
            [this](const std::string& text) {
              RequireNoNul(text);
              return TextLiteral(text);
            }},
      value);
}

std::string SqlDialectBase::TextLiteral(std::string_view text) const {
  return "'" + ReplaceAll(text, "'", "''") + "'";
}

void SqlDialectBase::AppendInsertInto(SqlStatement& statement, std::string_view table,
                                      std::span<const std::string_view> columns) {
  statement.Sql("INSERT INTO ").Sql(table).Sql(" ( ");
  for (std::size_t index = 0; index < columns.size(); ++index) {
    if (index > 0) statement.Sql(", ");
    statement.Sql(columns[index]);
  }
  statement.Sql(" )");
}

void SqlDialectBase::AppendValues(SqlStatement& statement, std::span<const SqlLiteral> values) {
  for (std::size_t index = 0; index < values.size(); ++index) {
    if (index > 0) statement.Sql(", ");
    statement.Literal(values[index]);
  }
}

SqlStatement SqlDialectBase::InsertUnlessPresent(std::string_view table, std::string_view /*keyTable*/,
                                                 std::span<const std::string_view> columns,
                                                 std::span<const SqlLiteral> values) const {
  SqlStatement statement;
  AppendInsertInto(statement, table, columns);
  statement.Sql(" VALUES (");
  AppendValues(statement, values);
  return statement.Sql(") ON CONFLICT (").Sql(columns[0]).Sql(") DO NOTHING");
}

const EngineTraits& SqliteDialect::Engine() const {
  static const EngineTraits traits{.name = "sqlite",
                                   .schema = data::sqliteSchema,
                                   .isFile = true,
                                   .statementsPerCall = 256,
                                   .rowsPerTransaction = 200'000};
  return traits;
}

const EngineTraits& SqlServerDialect::Engine() const {
  static const EngineTraits traits{
      .name = "sqlserver", .schema = data::sqlServerSchema, .batchForm = BatchForm::WithRowCounts};
  return traits;
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

std::string SqlServerDialect::TextLiteral(std::string_view text) const {
  const bool ascii = std::ranges::all_of(text, [](char c) { return static_cast<unsigned char>(c) < 0x80; });
  const std::string quoted = SqlDialectBase::TextLiteral(text);
  return ascii ? quoted : "N" + quoted;
}

const EngineTraits& AccessDialect::Engine() const {
  static const EngineTraits traits{.name = "access", .schema = data::accessSchema};
  return traits;
}

// Jet selects constants only FROM something: a count, which is always one row, and which the condition then drops when
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

}  // namespace tolvan
