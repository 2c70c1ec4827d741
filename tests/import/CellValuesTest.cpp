#include "base/Currency.h"

#include <gtest/gtest.h>

#include <array>
#include <map>

#include "import/CellValues.h"
#include "import/ImportReport.h"
#include "import/MovilnetRow.h"
#include "import/StoreTables.h"

namespace tolvan {
namespace {

TEST(CellCleaning, MakesCodesAndDescriptions) {
  // Text, code, description.
  const std::vector<std::array<const char*, 3>> cases{
      {"ab 12-x", "AB12-X", "AB 12X"},
      {"  a\r\nb ", "AB", "AB"},
      {"12345678901234567890", "12345678901234", "12345678901234567890"},
      {"ñandú ñandú ñandú ñ", "ÑANDÚÑANDÚÑAND", "ÑANDÚ ÑANDÚ ÑANDÚ Ñ"},
      {"TV  23.5/LED-x", "TV23.5/LED-X", "TV 235LEDX"},
      {"a   b", "AB", "A  B"},
      {" - ", "-", ""},
      {"   ", "", ""}};
  for (const auto& [text, code, description] : cases) {
    EXPECT_EQ(CleanCode(text, itemCodeLength), code) << text;
    EXPECT_EQ(CleanDescription(text, descriptionLength), description) << text;
  }
  EXPECT_EQ(CleanDescription(std::string(130, 'a'), descriptionLength), std::string(125, 'A'));
  EXPECT_EQ(CleanCode("marca del equipo", shortCodeLength), "MARCADELEQUI");
}

TEST(AmountInCell, KeepsWhatFifteenDigitsHold) {
  const std::map<std::int64_t, std::int64_t> cases{{999'999'999'999'999, 999'999'999'999'999},
                                                   {-1'234'567'890'123'455, -1'234'567'890'123'460},
                                                   {1'234'567'890'123'454, 1'234'567'890'123'450},
                                                   {9'223'372'036'854'775'807, 9'223'372'036'854'770'000}};
  for (const auto& [count, kept] : cases) {
    EXPECT_EQ(AmountInCell(Currency::FromTenThousandths(count)).TenThousandths(), kept);
  }
}

TEST(MovilnetCode, IsMadeFromModelBrandAndType) {
  // Model, brand, type, code, department.
  const std::vector<std::array<const char*, 5>> cases{
      {"Samsung Galaxy Refurbished", "Samsung", "Telefono GSM", "TSAGALAXYRF", "GSM"},
      {"VERGATARIO EVDO", "ZTE", "cdma 1x", "TZTVERG", "CDMA"},
      {"Orinoquia Auyantepui Y210", "Huawei", "GSM", "THUORIAYTY21", "GSM"},
      {"Huaw E-173/b.2", "Huawei", "Modem USB UMTS", "MHUE173B2", "GSM"},
      {"Combo CDMA", "LG", "CDMA y UMTS", "TLGCOMBOCDMA", "GSM"},
      {"X100", "X", "Satelital", "TXX100", ""},
      {"Blu", " b lu ", "fijo", "TBLBLU", ""}};
  for (const auto& [model, brand, type, code, department] : cases) {
    EXPECT_EQ(MovilnetCode(model, brand, type), code) << model;
    EXPECT_EQ(MovilnetDepartment(type), department) << type;
  }
}

TEST(MovilnetCode, TakesCellsFullOfText) {
  std::string model;
  while (model.size() < 32'000) model += "abd";
  const std::string brand = "ab" + std::string(30'000, 'c');
  EXPECT_EQ(MovilnetCode(model, brand, "GSM"), "TABDDDDDDDDD");
  EXPECT_EQ(MovilnetCode(model, model.substr(1), "GSM"), "TBDA");
}

Currency Of(const char* text) {
  return Currency::Parse(text).value();
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

TEST(CsvText, LeavesNothingForASpreadsheetToCalculate) {
  const std::vector<std::pair<std::string, std::string>> cases{{"=1+1", "'=1+1"},
                                                               {"+cmd|' /C calc'!A0", "'+cmd|' /C calc'!A0"},
                                                               {"-2", "'-2"},
                                                               {"@SUM(1)", "'@SUM(1)"},
                                                               {"\t=1", "'\t'=1"},
                                                               {"\r", "\"'\r\""},
                                                               {" \u00A0=1", "' \u00A0=1"},
                                                               {"＝1", "'＝1"},
                                                               {"A; =1;B", "A;' =1;B"},
                                                               {"A\n+1", "\"A\n'+1\""},
                                                               {"=HYPERLINK(\"x\",1)", "\"'=HYPERLINK(\"\"x\"\",1)\""},
                                                               {"TV-LED 1+1=2 a@b", "TV-LED 1+1=2 a@b"},
                                                               {"5, =1", "\"5, =1\""},
                                                               {"", ""}};
  for (const auto& [text, field] : cases) EXPECT_EQ(CsvText(text), field);
}

}  // namespace
}  // namespace tolvan
