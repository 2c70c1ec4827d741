#include "database/sql/SqlDialectBase.h"

#include "base/Text.h"
#include "host/HostError.h"

namespace tolvan {
namespace {

template <class... Cases>
struct Match : Cases... {
  using Cases::operator()...;
};
template <class... Cases>
Match(Cases...) -> Match<Cases...>;  // the compiler of the checks does not deduce it by itself

}  // namespace

void RequireNoNul(std::string_view text) {
  const std::size_t place = text.find('\0');
  if (place == std::string_view::npos) return;
  // What stands before it tells the text; the character itself must not reach a message.
  throw HostError(HostErrorKind::InvalidValue, "el texto contiene un carácter nulo", std::string(text, 0, place) + "…");
}

std::string SqlDialectBase::Literal(const SqlLiteral& value) const {
  return std::visit(
      Match{[](std::monostate) { return std::string("NULL"); }, [this](bool flag) { return BooleanLiteral(flag); },
            [](std::int64_t number) { return std::to_string(number); },
            [](Currency money) { return money.ToShortestText(); },
            [this](const DateTime& moment) { return MomentLiteral(moment); },
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

SqlStatement SqlDialectBase::InsertOnConflictDoNothing(std::string_view table,
                                                       std::span<const std::string_view> columns,
                                                       std::span<const SqlLiteral> values) {
  SqlStatement statement;
  AppendInsertInto(statement, table, columns);
  statement.Sql(" VALUES (");
  AppendValues(statement, values);
  statement.Sql(") ON CONFLICT (").Sql(columns[0]).Sql(") DO NOTHING");
  return statement;
}

}  // namespace tolvan
