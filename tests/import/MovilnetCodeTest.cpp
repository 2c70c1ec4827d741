#include "import/MovilnetCode.h"

#include <gtest/gtest.h>

namespace tolvan {
namespace {

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
