#include "export/SalesTotals.h"

#include <stdexcept>

namespace tolvan {
namespace {

HostError NotAnAmount(std::string_view name, const std::string& text) {
  return {HostErrorKind::InvalidValue, "el total del día no es un importe: " + text, std::string(name)};
}

/// A sum over no rows is NULL and counts as zero.
Currency Sum(const Recordset& rows, std::string_view name) {
  const FieldValue value = rows.Value(name);
  if (IsNull(value)) return {};
  const auto amount = CurrencyOf(value);
  if (!amount) throw NotAnAmount(name, TextOf(value));
  return *amount;
}

}  // namespace

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

SqlStatement SumDayOperationsStatement(Date day, std::int32_t company) {
  SqlStatement statement(
      "SELECT Count(Ventas.idVenta) as SumaDeOperaciones, Sum(Ventas.SubTotal) AS SumaDeSubTotal, "
      "Sum(Ventas.Descuentos + Ventas.OtroDescuento) AS SumaDeDescuentos, "
      "Sum(Ventas.Impuestos) AS SumaDeImpuestos ");
  statement.Sql("FROM Ventas WHERE Ventas.Anulado<>")
      .Boolean(true)
      .Sql(" AND Ventas.VentaRealizada=")
      .Boolean(true)
      .Sql(" AND Ventas.idCompania = ")
      .Integer(company)
      .Sql(" AND Ventas.FechaValidacion >= ")
      .Moment({.date = day})
      .Sql(" AND Ventas.FechaValidacion < ")
      .Moment({.date = day.PlusDays(1)});
  return statement;
}

DaySalesTotals SumDayOperations(DatabaseServices& database, Date day, std::int32_t company) {
  const auto rows = database.OpenRecordset(SumDayOperationsStatement(day, company));
  DaySalesTotals totals;
  if (rows->AtEnd()) return totals;
  totals.operations = IntegerOf(rows->Value("SumaDeOperaciones")).value_or(0);
  totals.subtotal = Sum(*rows, "SumaDeSubTotal");
  totals.discounts = Sum(*rows, "SumaDeDescuentos");
  totals.taxes = Sum(*rows, "SumaDeImpuestos");
  try {
    totals.total = totals.subtotal - totals.discounts + totals.taxes;
  } catch (const std::overflow_error&) {
    throw NotAnAmount("Total", "no cabe");
  }
  return totals;
}

}  // namespace tolvan
