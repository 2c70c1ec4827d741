#include "fiscal/CustomerStatement.h"

#include <string>

namespace tolvan {
namespace {

constexpr std::string_view table = "CLIENTES";
constexpr std::array<std::string_view, 6> columns = {"idCliente",   "Descripcion",       "RIF",
                                                     "TipoCliente", "PersoneriaCliente", "Activo"};

// What stands in the blank statement where a row's values go.
constexpr std::string_view codeMark = "code";
constexpr std::string_view nameMark = "name";
constexpr std::string_view personeriaMark = "personeria";

std::vector<std::size_t> PlacesOf(const SqlStatement& statement, std::string_view mark) {
  std::vector<std::size_t> places;
  for (std::size_t index = 0; index < statement.Literals().size(); ++index) {
    const auto* text = std::get_if<std::string>(&statement.Literals()[index]);
    if (text != nullptr && *text == mark) places.push_back(index);
  }
  return places;
}

}  // namespace

CustomerStatement::CustomerStatement(const SqlDialect& dialect, bool active) : dialect_(&dialect), active_(active) {
  // Only valid identifiers are written, so every row is that of a taxpayer (1), and its code for reports is its code.
  const std::array<SqlLiteral, columns.size()> values = {std::string(codeMark),       std::string(nameMark),
                                                         std::string(codeMark),       std::int64_t{1},
                                                         std::string(personeriaMark), active};
  blank_ = dialect.InsertUnlessPresent(table, "Clientes", columns, values);
  codePlaces_ = PlacesOf(blank_, codeMark);
  namePlaces_ = PlacesOf(blank_, nameMark);
  personeriaPlaces_ = PlacesOf(blank_, personeriaMark);
  const std::array<CustomerRow, 1> anyRow{};
  hasStatementForMany_ = TryForMany(anyRow).has_value();
}

SqlStatement CustomerStatement::ForMany(std::span<const CustomerRow> rows) const {
  return TryForMany(rows).value();
}

std::optional<SqlStatement> CustomerStatement::TryForMany(std::span<const CustomerRow> rows) const {
  std::vector<SqlLiteral> values;
  values.reserve(rows.size() * columns.size());
  for (const CustomerRow& row : rows) {
    values.emplace_back(std::string(row.code));
    values.emplace_back(std::string(row.name));
    values.emplace_back(std::string(row.code));
    values.emplace_back(std::int64_t{1});
    values.emplace_back(std::int64_t{row.personeria});
    values.emplace_back(active_);
  }
  return dialect_->InsertManyUnlessPresent(table, columns, values);
}

void CustomerStatement::Fill(SqlStatement& statement, const CustomerRow& row) const {
  for (const std::size_t place : codePlaces_) statement.ReplaceText(place, row.code);
  for (const std::size_t place : namePlaces_) statement.ReplaceText(place, row.name);
  for (const std::size_t place : personeriaPlaces_) {
    statement.ReplaceLiteral(place, std::int64_t{row.personeria});
  }
}

}  // namespace tolvan
