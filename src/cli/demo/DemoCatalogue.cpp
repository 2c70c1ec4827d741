#include "base/Calendar.h"
#include "base/NumberText.h"
#include "cli/demo/DemoData.h"

namespace tolvan {
namespace {

struct Good {
  std::string_view name;
  int cost;  // of the smallest size, whole units
};

/// Goods of one kind: every good comes in every size and of every brand.
struct Shelf {
  std::string_view department;
  std::string_view prefix;
  int taxClass;
  bool exempt;
  int boxOf;
  std::vector<Good> goods;
  std::vector<std::string_view> sizes;
  std::vector<std::string_view> brands;
};

const std::vector<DemoBrand>& Brands() {
  static const std::vector<DemoBrand> brands = {
      {"DEF", "GENERAL"},        {"LALOMA", "LA LOMA"},       {"CAOBA", "CAOBA"},
      {"RIOVERDE", "RIO VERDE"}, {"PALMAREAL", "PALMA REAL"}, {"ISLABELLA", "ISLABELLA"},
      {"TALLER9", "TALLER 9"},   {"ORINOKO", "ORINOKO"},      {"TELMAR", "TELMAR"}};
  return brands;
}

// One table of data, no steps. NOLINTNEXTLINE(readability-function-size)
const std::vector<Shelf>& Shelves() {
  static const std::vector<Shelf> shelves = {
      {"ALIMENTOS",
       "ALI",
       1,
       true,
       12,
       {{"ARROZ", 32},
        {"HABICHUELA ROJA", 55},
        {"AZUCAR CREMA", 30},
        {"HARINA DE MAIZ", 28},
        {"SAL MOLIDA", 14},
        {"AVENA", 42}},
       {"1 LB", "5 LB", "10 LB"},
       {"LALOMA", "CAOBA", "RIOVERDE"}},
      {"BEBIDAS",
       "BEB",
       1,
       false,
       24,
       {{"JUGO DE CHINOLA", 38}, {"REFRESCO ROJO", 30}, {"AGUA", 12}, {"MALTA", 35}, {"CAFE MOLIDO", 120}},
       {"500 ML", "1 LITRO", "2 LITROS"},
       {"PALMAREAL", "ISLABELLA", "CAOBA", "RIOVERDE"}},
      {"LIMPIEZA",
       "LIM",
       1,
       false,
       12,
       {{"DETERGENTE", 60}, {"CLORO", 40}, {"JABON DE CUABA", 25}, {"DESINFECTANTE", 70}, {"LAVAPLATOS", 55}},
       {"PEQUEÑO", "MEDIANO", "GRANDE"},
       {"ISLABELLA", "RIOVERDE", "CAOBA", "PALMAREAL"}},
      {"FERRETERIA",
       "FER",
       1,
       false,
       0,
       {{"TORNILLO", 3},
        {"BOMBILLO LED", 65},
        {"LLAVE DE PASO", 190},
        {"CINTA AISLANTE", 45},
        {"BROCHA", 80},
        {"CANDADO", 210}},
       {"N 1", "N 2", "N 3", "N 4"},
       {"TALLER9", "CAOBA", "DEF"}},
      {"PAPELERIA",
       "PAP",
       2,
       false,
       0,
       {{"CUADERNO", 45}, {"LAPIZ", 8}, {"RESMA DE PAPEL", 260}, {"CARPETA", 18}},
       {"A", "B", "C", "D"},
       {"LALOMA", "PALMAREAL", "DEF"}},
      {"GSM",
       "GSM",
       1,
       false,
       0,
       {{"TELEFONO MODELO 10", 2900}, {"TELEFONO MODELO 20", 5200}, {"MODEM USB", 1800}},
       {"NEGRO", "BLANCO"},
       {"ORINOKO", "TELMAR"}},
      {"CDMA",
       "CDM",
       1,
       false,
       0,
       {{"TELEFONO BASICO", 1500}, {"TELEFONO PLEGABLE", 2300}},
       {"NEGRO", "GRIS"},
       {"ORINOKO", "TELMAR"}},
  };
  return shelves;
}

/// Whole units, ended on 5 or 0 as price tags are from fifty on.
int PriceTag(int cost, DemoRandom& random) {
  const int price = cost * static_cast<int>(128 + random.Below(30)) / 100 + 1;
  return price < 50 ? price : (price + 4) / 5 * 5;
}

DemoItem MakeItem(const Shelf& shelf, std::string code, std::string description, std::string_view brand, int cost,
                  DemoRandom& random) {
  return {.code = std::move(code),
          .description = std::move(description),
          .brand = std::string(brand),
          .department = std::string(shelf.department),
          .taxClass = shelf.taxClass,
          .exempt = shelf.exempt,
          .cost = Currency::FromTenThousandths(cost * Currency::unit +
                                               std::int64_t{2500} * static_cast<int>(random.Below(4))),
          .priceWithTax = Currency::FromUnits(PriceTag(cost, random)),
          .boxOf = shelf.boxOf};
}

void FillShelf(const Shelf& shelf, DemoRandom& random, std::vector<DemoItem>& items) {
  int number = 0;
  for (const Good& good : shelf.goods) {
    int size = 0;
    for (const std::string_view sizeName : shelf.sizes) {
      ++size;
      for (const std::string_view brand : shelf.brands) {
        const int cost = good.cost * (size + 1) / 2 + static_cast<int>(random.Below(6));
        const std::string description = std::string(good.name) + ' ' + std::string(sizeName) + ' ' + std::string(brand);
        items.push_back(
            MakeItem(shelf, std::string(shelf.prefix) + PaddedNumber(++number, 4), description, brand, cost, random));
      }
    }
  }
}

}  // namespace

DemoCatalogue MakeDemoCatalogue() {
  DemoCatalogue catalogue{.brands = Brands(),
                          .departments = {{"DEF", "GENERAL"},
                                          {"ALIMENTOS", "Alimentos"},
                                          {"BEBIDAS", "Bebidas"},
                                          {"LIMPIEZA", "Limpieza del hogar"},
                                          {"FERRETERIA", "Ferretería"},
                                          {"PAPELERIA", "Papelería"},
                                          {"GSM", "Equipos GSM", true},
                                          {"CDMA", "Equipos CDMA", true}},
                          .items = {}};
  DemoRandom random(2010);
  for (const Shelf& shelf : Shelves()) FillShelf(shelf, random, catalogue.items);
  return catalogue;
}

std::string DemoBarcode(std::string_view twelveDigits) {
  int sum = 0;
  for (std::size_t index = 0; index < twelveDigits.size(); ++index) {
    sum += (twelveDigits[index] - '0') * (index % 2 == 0 ? 1 : 3);
  }
  return std::string(twelveDigits) + std::to_string((10 - sum % 10) % 10);
}

}  // namespace tolvan
