#include "import/StoreTables.h"

#include "base/Text.h"

namespace tolvan {

DepartmentTable DepartmentTable::Load(DatabaseServices& database) {
  DepartmentTable table;
  const auto rows = database.OpenRecordset(SqlStatement("SELECT idDepartamento, RequerirSeriales FROM Departamentos"));
  for (; !rows->AtEnd(); rows->MoveNext()) {
    const bool requiresSerials = BooleanOf(rows->Value(std::size_t{1})).value_or(false);
    table.requiresSerials_.emplace(ToUpper(rows->Text(0)), requiresSerials);
  }
  return table;
}

bool DepartmentTable::Contains(std::string_view department) const {
  return requiresSerials_.contains(ToUpper(department));
}

bool DepartmentTable::RequiresSerials(std::string_view department) const {
  const auto found = requiresSerials_.find(ToUpper(department));
  return found != requiresSerials_.end() && found->second;
}

Rate LoadForeignFactor(DatabaseServices& database) {
  SqlStatement statement("SELECT idMoneda, FactorConversion FROM Monedas WHERE MonedaExtranjera = ");
  const auto rows = database.OpenRecordset(statement.Boolean(true));
  if (rows->AtEnd()) throw HostError(HostErrorKind::InvalidValue, "no hay una moneda extranjera registrada");
  const std::optional<Rate> factor = Rate::Of(rows->Value(std::size_t{1}));
  if (!factor || factor->IsZero()) {
    throw HostError(HostErrorKind::InvalidValue,
                    "el factor de conversión de la moneda " + std::string(rows->Text(0)) + " no es utilizable");
  }
  return *factor;
}

}  // namespace tolvan
