#include "import/CellCleaning.h"

#include <gtest/gtest.h>

#include <map>

#include "import/AmountCell.h"
#include "import/MovilnetCode.h"

namespace tolvan {
namespace {

TEST(CellCleaning, MakesCodesAndDescriptions) {
  struct Case {
    const char* text;
    const char* code;
    const char* description;
  };
  const Case cases[] = {{"ab 12-x", "AB12-X", "AB 12X"},
                        {"  a\r\nb ", "AB", "AB"},
                        {"12345678901234567890", "12345678901234", "12345678901234567890"},
                        {"ñandú ñandú ñandú ñ", "ÑANDÚÑANDÚÑAND", "ÑANDÚ ÑANDÚ ÑANDÚ Ñ"},
                        {"TV  23.5/LED-x", "TV23.5/LED-X", "TV 235LEDX"},
                        {"a   b", "AB", "A  B"},
                        {" - ", "-", ""},
                        {"   ", "", ""}};
  for (const Case& each : cases) {
    EXPECT_EQ(CleanCode(each.text, itemCodeLength), each.code) << each.text;
    EXPECT_EQ(CleanDescription(each.text, descriptionLength), each.description) << each.text;
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
  struct Case {
    const char* model;
    const char* brand;
    const char* type;
    const char* code;
    const char* department;
  };
  const Case cases[] = {
      {"Samsung Galaxy Refurbished", "Samsung", "Telefono GSM", "TSAGALAXYRF", "GSM"},
      {"VERGATARIO EVDO", "ZTE", "cdma 1x", "TZTVERG", "CDMA"},
      {"Orinoquia Auyantepui Y210", "Huawei", "GSM", "THUORIAYTY21", "GSM"},
      {"Huaw E-173/b.2", "Huawei", "Modem USB UMTS", "MHUE173B2", "GSM"},
      {"Combo CDMA", "LG", "CDMA y UMTS", "TLGCOMBOCDMA", "GSM"},
      {"X100", "X", "Satelital", "TXX100", ""},
      {"Blu", " b lu ", "fijo", "TBLBLU", ""},
  };
  for (const Case& each : cases) {
    EXPECT_EQ(MovilnetCode(each.model, each.brand, each.type), each.code) << each.model;
    EXPECT_EQ(MovilnetDepartment(each.type), each.department) << each.type;
  }
}

TEST(MovilnetCode, TakesCellsFullOfText) {
  std::string model;
  while (model.size() < 32'000) model += "abd";
  const std::string brand = "ab" + std::string(30'000, 'c');
  EXPECT_EQ(MovilnetCode(model, brand, "GSM"), "TABDDDDDDDDD");
  EXPECT_EQ(MovilnetCode(model, model.substr(1), "GSM"), "TBDA");
}

}  // namespace
}  // namespace tolvan
