#include "export/SumDaySales.h"

namespace tolvan {

SqlStatement SumDaySalesStatement(Date day, bool withTaxes) {
  SqlStatement statement(withTaxes ? "SELECT Sum(Ventas.GranTotal) AS SumaDeGranTotal "
                                   : "SELECT Sum(Ventas.GranTotal - Ventas.Impuestos) AS SumaDeGranTotal ");
  statement.Sql("From Ventas WHERE (((Ventas.VentaRealizada)=")
      .Boolean(true)
      .Sql(") AND ((Ventas.Anulado)<>")
      .Boolean(true)
      .Sql(")) AND Ventas.FechaValidacion >= ")
      .Moment({.date = day})
      .Sql(" AND Ventas.FechaValidacion < ")
      .Moment({.date = day.PlusDays(1)});
  if (withTaxes) statement.Sql(";");
  return statement;
}

Currency SumDaySales(DatabaseServices& database, Date day, bool withTaxes) {
  const auto rows = database.OpenRecordset(SumDaySalesStatement(day, withTaxes));
  if (rows->AtEnd()) return {};
  const FieldValue sum = rows->Value("SumaDeGranTotal");
  if (IsNull(sum)) return {};
  const std::optional<Currency> total = CurrencyOf(sum);
  if (!total) {
    throw HostError(HostErrorKind::InvalidValue, "la suma de las ventas del día no es un importe: " + TextOf(sum));
  }
  return *total;
}

}  // namespace tolvan
