// The totals of a day over a year of sales, by both texts of the day total, against the same sums in a database that
// lacks the index on the date of the sale. Both run through the provider, with their pages in the cache.
#include <cstdio>
#include <string>
#include <vector>

#include "Bench.h"
#include "BenchFolder.h"
#include "database/sql/SqlScript.h"
#include "database/sqlite/SqliteDatabaseServices.h"

namespace tolvan::data {}

namespace tolvan::bench {
namespace {

constexpr int sales = 300'000;
constexpr int daysOfSales = 365;
const Date firstDay = Date::FromParts(2023, 1, 1);

SqlStatement InsertSale(int number) {
  const Date day = firstDay.PlusDays(number % daysOfSales);  // rows of one day lie apart, as after years of use
  const DateTime moment{day, 8 + number % 12, number % 60, (number / 60) % 60};
  const std::int64_t size = number % 977;
  const Currency total = Currency::FromTenThousandths(10'000 + size * 12'345);
  const Currency tax = Currency::FromTenThousandths(size * 1'883);
  SqlStatement insert(
      "INSERT INTO Ventas (idVenta, idCompania, FechaValidacion, VentaRealizada, Anulado, SubTotal, Impuestos, "
      "GranTotal) VALUES (");
  insert.Integer(number + 1).Sql(", 1, ").Moment(moment).Sql(", ").Boolean(number % 50 != 0).Sql(", ");
  insert.Boolean(number % 40 == 0).Sql(", ").Money(total - tax).Sql(", ").Money(tax).Sql(", ").Money(total);
  return insert.Sql(")");
}

SqlStatement DayTotal(Date day, bool withTaxes) {
  SqlStatement query(withTaxes
                         ? "SELECT Sum(Ventas.GranTotal) AS SumaDeGranTotal From Ventas WHERE "
                         : "SELECT Sum(Ventas.GranTotal - Ventas.Impuestos) AS SumaDeGranTotal From Ventas WHERE ");
  query.Sql("(((Ventas.VentaRealizada)=").Boolean(true).Sql(") AND ((Ventas.Anulado)<>").Boolean(true);
  query.Sql(")) AND Ventas.FechaValidacion >= ").Moment({day}).Sql(" AND Ventas.FechaValidacion < ");
  query.Moment({day.PlusDays(1)});
  return withTaxes ? query.Sql(";") : query;
}

/// The totals of twenty days of the year.
Currency TotalsOf(DatabaseServices& database, bool withTaxes) {
  Currency sum;
  for (int day = 0; day < daysOfSales; day += 19) {
    const auto row = database.OpenRecordset(DayTotal(firstDay.PlusDays(day), withTaxes));
    sum += CurrencyOf(row->Value("SumaDeGranTotal")).value_or(Currency());
  }
  return sum;
}

void Fill(DatabaseServices& database, bool withIndex) {
  RunSqlScript(database, data::sqliteSchema);
  if (!withIndex) database.Execute(SqlStatement("DROP INDEX VentasPorFecha"));
  const auto transaction = database.BeginTransaction();
  for (int number = 0; number < sales; ++number) database.Execute(InsertSale(number));
  transaction->Commit();
}

int Main() {
  const BenchFolder folder;
  SqliteDatabaseServices indexed({.path = folder.File("indexed.db"), .createIfMissing = true});
  SqliteDatabaseServices plain({.path = folder.File("plain.db"), .createIfMissing = true});
  Fill(indexed, true);
  Fill(plain, false);
  bool reached = true;
  for (const bool withTaxes : {true, false}) {
    Currency found;
    Currency expected;
    const std::string name = withTaxes ? "twenty day totals with taxes" : "twenty day totals without taxes";
    const Work job{[&] { found = TotalsOf(indexed, withTaxes); }};
    const Work reference{[&] { expected = TotalsOf(plain, withTaxes); }};
    reached = Compare(name, job, reference, 0.01) && reached;
    if (found != expected || found == Currency()) {
      std::fprintf(stderr, "the totals differ: %s and %s\n", found.ToText().c_str(), expected.ToText().c_str());
      return 2;
    }
  }
  return reached ? 0 : 1;
}

}  // namespace
}  // namespace tolvan::bench

int main() {
  return tolvan::bench::Main();
}
