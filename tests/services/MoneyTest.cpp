#include <gtest/gtest.h>

#include "services/MoneyFormat.h"
#include "services/Rate.h"

namespace tolvan {
namespace {

Currency Of(const char* text) {
  return Currency::Parse(text).value();
}

TEST(FormatMoney, ShowsAnAmountByThePatternOfTheHost) {
  struct Case {
    const char* amount;
    const char* pattern;
    const char* separator;
    const char* shown;
  };
  const Case cases[] = {
      {"1234567.005", "#,##0.00", ",", "1,234,567.01"},
      {"-1234.5", "#,##0.00", ".", "-1.234,50"},
      {"999.995", "#,##0.00", ",", "1,000.00"},
      {"-0.004", "0.00", ",", "0.00"},
      {"0.5", "0", "", "1"},
      {"1234.5", "0.00##", ",", "1234.50"},
      {"1234.5678", "0.00##", ",", "1234.5678"},
      {"12.3", "0.##", ",", "12.3"},
      {"12", "0.##", ",", "12"},
      {"1234", "RD$ #,##0.0 netos", "'", "RD$ 1'234.0 netos"},
      {"-3", "RD$ 0", ",", "-RD$ 3"},
      {"922337203685477.5807", "#,##0.0000", ",", "922,337,203,685,477.5807"},
  };
  for (const Case& one : cases) {
    EXPECT_EQ(FormatMoney(Of(one.amount), one.pattern, one.separator), one.shown) << one.pattern;
  }
}

TEST(Rate, AddsAndTakesOffATaxRoundingOnceHalfToEven) {
  const Rate eighteen = Rate::Of(DecimalText{"0.18"}).value();
  EXPECT_EQ(eighteen.WithTax(Of("100.0025")), Of("118.0030"));  // 118.00295
  EXPECT_EQ(eighteen.WithTax(Of("0.0025")), Of("0.0030"));      // 0.00295
  EXPECT_EQ(eighteen.WithoutTax(Of("118")), Of("100"));
  EXPECT_EQ(Rate::Of(1.0)->WithoutTax(Of("0.0001")), Of("0"));  // 0.00005
  EXPECT_EQ(Rate::Of(1.0)->WithoutTax(Of("0.0003")), Of("0.0002"));
  EXPECT_EQ(Rate::Of(std::string("58.75"))->Divide(Of("117.5")), Of("2"));
  EXPECT_EQ(Rate().WithTax(Of("7")), Of("7"));
  EXPECT_THROW((void)Rate().Divide(Of("7")), std::domain_error);
  EXPECT_THROW((void)eighteen.WithTax(Of("922337203685477.5807")), std::overflow_error);
  for (const FieldValue& none : {FieldValue(), FieldValue(-0.01), FieldValue(1e7), FieldValue(std::string("18%")),
                                 FieldValue(DateTime{.date = Date::FromParts(2024, 1, 1)})}) {
    EXPECT_FALSE(Rate::Of(none)) << TextOf(none);
  }
  EXPECT_EQ(Rate::Of(DecimalText{"9999999.99999999"})->Divide(Of("0")), Of("0"));
}

}  // namespace
}  // namespace tolvan
