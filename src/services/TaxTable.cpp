#include "services/TaxTable.h"

namespace tolvan {

TaxTable TaxTable::Load(DatabaseServices& database) {
  TaxTable table;
  const auto rows = database.OpenRecordset(SqlStatement("SELECT ClaseI, Tasa, EsGeneral FROM Impuestos"));
  for (; !rows->AtEnd(); rows->MoveNext()) {
    const std::optional<std::int64_t> taxClass = IntegerOf(rows->Value(std::size_t{0}));
    const FieldValue written = rows->Value(std::size_t{1});
    const std::optional<Rate> rate = Rate::Of(written);
    if (!taxClass || !rate) {
      throw HostError(HostErrorKind::InvalidValue, "la tasa de un impuesto no es una fracción: " + TextOf(written));
    }
    table.rates_.emplace(*taxClass, *rate);
    if (BooleanOf(rows->Value(std::size_t{2})).value_or(false)) table.generalClass_ = *taxClass;
  }
  return table;
}

Rate TaxTable::RateOf(std::int64_t taxClass) const {
  const auto found = rates_.find(taxClass);
  return found == rates_.end() ? Rate() : found->second;
}

}  // namespace tolvan
