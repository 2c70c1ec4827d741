#include "import/AlternateUnitRule.h"

#include "base/Text.h"
#include "import/CellCleaning.h"

namespace tolvan {

bool AlternateUnitRule::Named(const TemplateRow& row) {
  return !row.unitCode.empty() && row.unitCode != defaultCode && row.multiplier > 1;
}

void AlternateUnitRule::TellUnused(const TemplateRow& row, Remarks& remarks) {
  if (Named(row)) return;
  const bool hasUnit = !row.unitCode.empty() && row.unitCode != defaultCode;
  if (hasUnit) {
    remarks.push_back("la unidad " + row.unitCode + " no se toma en cuenta: su multiplicador no es mayor que 1");
  } else if (row.multiplier > 1 || row.alternatePrice.Given() || row.alternateCost.Given()) {
    remarks.emplace_back("no se nombra una unidad alterna: las columnas I, J y K no se toman en cuenta");
  }
}

SqlStatement AlternateUnitRule::UnitsStatement(std::string_view code, std::string_view principalUnit) {
  SqlStatement statement("SELECT idItem, idUnidad, Multiplicador FROM ItemsUnidades WHERE idItem = ");
  return statement.Text(code).Sql(" AND idUnidad <> ").Text(principalUnit);
}

SqlStatement AlternateUnitRule::SerialsStatement(std::string_view code) {
  SqlStatement statement("SELECT 1 FROM Items WHERE idItem = ");
  return statement.Text(code).Sql(" AND RequiereSeriales = ").Boolean(true);
}

std::optional<std::string> AlternateUnitRule::Find(const TemplateRow& row, Recordset& units, Remarks& remarks) {
  for (; !units.AtEnd(); units.MoveNext()) {
    if (!EqualIgnoringCase(units.Text(1), row.unitCode)) continue;
    const std::int64_t multiplier = IntegerOf(units.Value(std::size_t{2})).value_or(0);
    if (multiplier == row.multiplier) return std::string(units.Text(1));
    remarks.push_back("la unidad " + row.unitCode + " del Item es de " + std::to_string(multiplier) + " y no de " +
                      std::to_string(row.multiplier) + ": no se toma en cuenta");
    return std::nullopt;
  }
  remarks.push_back("el Item no tiene la unidad " + row.unitCode + ": no se toma en cuenta");
  return std::nullopt;
}

}  // namespace tolvan
