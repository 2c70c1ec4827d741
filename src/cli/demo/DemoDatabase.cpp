// The tables of the demo store.
#include <string_view>
#include <utility>
#include <vector>

#include "base/NumberText.h"
#include "cli/demo/DemoData.h"
#include "cli/demo/DemoStore.h"

namespace tolvan {
namespace {

constexpr int daysOfSales = 90;
const Currency generalRate = Currency::FromTenThousandths(1800);
const Currency reducedRate = Currency::FromTenThousandths(1600);

using Row = std::vector<SqlLiteral>;

/// INSERT INTO table (columns) VALUES (row).
void Insert(DatabaseServices& database, std::string_view table, std::string_view columns, const Row& row) {
  SqlStatement statement("INSERT INTO ");
  statement.Sql(table).Sql(" (").Sql(columns).Sql(") VALUES (");
  for (std::size_t index = 0; index < row.size(); ++index) {
    if (index > 0) statement.Sql(", ");
    statement.Literal(row[index]);
  }
  statement.Sql(")");
  database.Execute(statement);
}

SqlLiteral Text(std::string_view text) {
  return std::string(text);
}
SqlLiteral Number(std::int64_t number) {
  return number;
}

Currency RateOf(const DemoItem& item) {
  if (item.exempt) return {};
  return item.taxClass == 1 ? generalRate : reducedRate;
}

void FillBasics(DatabaseServices& database, const DemoCatalogue& catalogue) {
  for (const DemoBrand& brand : catalogue.brands) {
    Insert(database, "Marcas", "idMarca, Descripcion", {Text(brand.code), Text(brand.description)});
  }
  for (const DemoDepartment& department : catalogue.departments) {
    Insert(database, "Departamentos", "idDepartamento, Descripcion, RequerirSeriales, RequerirReglasSeriales",
           {Text(department.code), Text(department.description), department.needsSerials,
            department.needsSerials ? Text("8-15") : SqlLiteral()});
  }
  const std::string_view taxes = "ClaseI, Descripcion, Tasa, EsGeneral";
  Insert(database, "Impuestos", taxes, {Number(1), Text("ITBIS general"), generalRate, true});
  Insert(database, "Impuestos", taxes, {Number(2), Text("ITBIS reducido"), reducedRate, false});
  Insert(database, "Impuestos", taxes, {Number(3), Text("Sin ITBIS"), Currency(), false});
  const std::string_view currencies = "idMoneda, Descripcion, FactorConversion, MonedaExtranjera";
  Insert(database, "Monedas", currencies, {Text("RD"), Text("Peso dominicano"), Number(1), false});
  Insert(database, "Monedas", currencies, {Text("US"), Text("Dólar"), Currency::FromTenThousandths(585'000), true});
  for (const auto& [code, name] : {std::pair{"DEF", "Unidad"}, {"CAJA", "Caja"}, {"PAQUETE", "Paquete"}}) {
    Insert(database, "Unidades", "idUnidad, Descripcion", {Text(code), Text(name)});
  }
  const std::string_view deposits = "idDeposito, Descripcion, Tipo, DisponibleEntrada";
  Insert(database, "Depositos", deposits, {Text("PRINCIPAL"), Text("Almacén principal"), Number(0), true});
  Insert(database, "Depositos", deposits, {Text("TIENDA"), Text("Piso de venta"), Number(0), false});
  Insert(database, "Depositos", deposits, {Text("TRANSITO"), Text("Mercancía en tránsito"), Number(1), true});
}

/// A unit of an item, with its costs and its prices for both inventories.
void FillUnit(DatabaseServices& database, const DemoItem& item, std::string_view unit, int pieces) {
  const bool principal = pieces == 1;
  const Currency factor = Currency::FromUnits(pieces);
  const Currency cost = item.cost.MultipliedBy(factor);
  const Currency netPrice = item.priceWithTax.MultipliedBy(factor).DividedBy(Currency::FromUnits(1) + RateOf(item));
  Insert(database, "ItemsUnidades", "idItem, idUnidad, EsPrincipal, Multiplicador, SolicitarDescomponer",
         {Text(item.code), Text(unit), principal, Number(pieces), !principal});
  for (const std::int64_t inventory : {0, 1}) {
    Insert(database, "ItemsUnidadesInv", "idItem, idUnidad, Inv, CostoActual, CostoAnterior, CostoActual_Ext",
           {Text(item.code), Text(unit), Number(inventory), cost, cost,
            cost.DividedBy(Currency::FromTenThousandths(585'000))});
    Insert(database, "Precios", "idItem, idUnidad, idLista, Inv, Precio, PrecioAnterior, Fijo",
           {Text(item.code), Text(unit), Text("DEF"), Number(inventory), netPrice, netPrice, true});
  }
}

void FillItem(DatabaseServices& database, const DemoItem& item, int number, bool needsSerials, DemoRandom& random) {
  Insert(database, "Items", "idItem, Descripcion, idMarca, idDepartamento, ClaseI, Exento, RequiereSeriales",
         {Text(item.code), Text(item.description), Text(item.brand), Text(item.department), Number(item.taxClass),
          item.exempt, needsSerials});
  FillUnit(database, item, "DEF", 1);
  const std::string_view barcodes = "Barcode, idItem, idUnidad";
  Insert(database, "Barcodes", barcodes,
         {Text(DemoBarcode("746000" + PaddedNumber(number, 6))), Text(item.code), Text("DEF")});
  if (item.boxOf > 0) {
    FillUnit(database, item, "CAJA", item.boxOf);
    Insert(database, "Barcodes", barcodes,
           {Text(DemoBarcode("746900" + PaddedNumber(number, 6))), Text(item.code), Text("CAJA")});
  }
  Insert(database, "Cantidades", "idItem, idUnidad, idDeposito, Inv, Cantidad",
         {Text(item.code), Text("DEF"), Text("PRINCIPAL"), Number(0), Number(random.Below(200))});
}

void FillItems(DatabaseServices& database, const DemoCatalogue& catalogue) {
  DemoRandom random(746);
  int number = 0;
  for (const DemoItem& item : catalogue.items) {
    const bool needsSerials = item.department == "GSM" || item.department == "CDMA";
    FillItem(database, item, ++number, needsSerials, random);
  }
}

/// One sale at a moment of the working day: a few items, sometimes a discount, sometimes void or left open.
void FillSale(DatabaseServices& database, std::int64_t number, Date day, const DemoCatalogue& catalogue,
              DemoRandom& random) {
  Currency subtotal;
  Currency taxes;
  for (std::uint32_t lines = 1 + random.Below(6); lines > 0; --lines) {
    const DemoItem& item = catalogue.items[random.Below(static_cast<std::uint32_t>(catalogue.items.size()))];
    const Currency net = item.priceWithTax.DividedBy(Currency::FromUnits(1) + RateOf(item));
    subtotal += net;
    taxes += item.priceWithTax - net;
  }
  const Currency discount = random.Chance(8) ? Currency::FromUnits(5) : Currency();
  const DateTime moment{.date = day,
                        .hour = static_cast<int>(8 + random.Below(11)),
                        .minute = static_cast<int>(random.Below(60)),
                        .second = static_cast<int>(random.Below(60))};
  Insert(
      database, "Ventas",
      "idVenta, idCompania, FechaValidacion, VentaRealizada, Anulado, SubTotal, Descuentos, OtroDescuento, Impuestos, "
      "GranTotal",
      {Number(number), Number(1), moment, !random.Chance(2), random.Chance(3), subtotal, discount, Currency(), taxes,
       subtotal - discount + taxes});
}

void FillSales(DatabaseServices& database, const DemoCatalogue& catalogue, Date today) {
  std::int64_t number = 0;
  for (int back = daysOfSales; back > 0; --back) {
    const Date day = today.PlusDays(-back);
    DemoRandom random(static_cast<std::uint64_t>(day.Year() * 10'000 + day.Month() * 100 + day.Day()));
    for (std::uint32_t sales = 60 + random.Below(80); sales > 0; --sales) {
      FillSale(database, ++number, day, catalogue, random);
    }
  }
}

}  // namespace

void FillDemoDatabase(DatabaseServices& database, Date today) {
  const DemoCatalogue catalogue = MakeDemoCatalogue();
  const auto transaction = database.BeginTransaction();
  FillBasics(database, catalogue);
  FillItems(database, catalogue);
  FillSales(database, catalogue, today);
  transaction->Commit();
}

}  // namespace tolvan
