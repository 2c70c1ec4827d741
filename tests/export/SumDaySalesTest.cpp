#include "export/SumDaySales.h"

#include <gtest/gtest.h>

#include "support/FakeHost.h"

namespace tolvan {
namespace {

TEST(SumDaySales, TakesWhatEveryEngineDeliversAndRefusesWhatIsNoAmount) {
  test::FakeDatabase database;
  EXPECT_EQ(SumDaySales(database, Date::FromParts(2024, 1, 31), true), Currency()) << "no row";
  FieldValue sum;
  database.answer = [&](const SqlStatement&) {
    return std::make_unique<test::FakeRecordset>(std::vector<std::string>{"SumaDeGranTotal"},
                                                 std::vector<std::vector<FieldValue>>{{sum}});
  };
  const std::vector<std::pair<FieldValue, std::int64_t>> cases = {
      {std::monostate(), 0},          {1234.56, 12'345'600},
      {std::int64_t{7}, 70'000},      {DecimalText{"99999999999.9999"}, 999'999'999'999'999},
      {-0.30000000000000004, -3'000},
  };
  for (const auto& [delivered, expected] : cases) {
    sum = delivered;
    EXPECT_EQ(SumDaySales(database, Date::FromParts(2024, 1, 31), false).TenThousandths(), expected);
  }
  sum = 1e18;
  EXPECT_THROW(SumDaySales(database, Date::FromParts(2024, 1, 31), false), HostError);
}

// The two texts differ in the subtraction and in the closing ";", which only one has.
TEST(SumDaySales, AsksForOneCalendarDayInExactlyTheAgreedText) {
  const std::string where =
      "From Ventas WHERE (((Ventas.VentaRealizada)=?) AND ((Ventas.Anulado)<>?)) AND Ventas.FechaValidacion >= ? AND "
      "Ventas.FechaValidacion < ?";
  const SqlStatement with = SumDaySalesStatement(Date::FromParts(2024, 2, 29), true);
  const SqlStatement without = SumDaySalesStatement(Date::FromParts(2024, 2, 29), false);
  EXPECT_EQ(with.ParameterText(), "SELECT Sum(Ventas.GranTotal) AS SumaDeGranTotal " + where + ";");
  EXPECT_EQ(without.ParameterText(), "SELECT Sum(Ventas.GranTotal - Ventas.Impuestos) AS SumaDeGranTotal " + where);
  ASSERT_EQ(without.Literals().size(), 4U);
  EXPECT_EQ(without.Literals()[3], SqlLiteral(DateTime{.date = Date::FromParts(2024, 3, 1)}));
}

}  // namespace
}  // namespace tolvan
