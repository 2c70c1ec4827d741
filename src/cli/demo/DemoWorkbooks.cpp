// The workbooks of the demo store: the template, and price lists of its suppliers to try the imports on.
#include <array>
#include <filesystem>
#include <string_view>
#include <vector>

#include "cli/demo/DemoData.h"
#include "cli/demo/DemoStore.h"
#include "import/TemplateExport.h"
#include "store/DeferredProviders.h"
#include "system/posix/PosixFileHelper.h"

namespace tolvan {

namespace data {
extern const std::string_view examplePricesXls;
extern const std::string_view templateXls;
extern const std::string_view templateXlsx;
}  // namespace data

namespace {

namespace fs = std::filesystem;
using Cells = std::vector<NewCell>;

class DayClock final : public Clock {
 public:
  explicit DayClock(Date day) : day_(day) {}
  DateTime Now() const override { return {.date = day_}; }

 private:
  Date day_;
};

struct NewGood {
  std::string_view code, description, brand, department;
  double cost, price;
};

// With blanks, hyphens and lower case, as suppliers write them.
constexpr std::array newGoods = {
    NewGood{"ali 0901", "Lenteja 1 lb. La Loma", "LALOMA", "ALIMENTOS", 41.25, 58},
    NewGood{"ALI-0902", "Garbanzo  1 lb. La Loma", "LALOMA", "ALIMENTOS", 44, 62},
    NewGood{"BEB-0901", "Jugo de tamarindo 500 ml", "PALMAREAL", "BEBIDAS", 22.5, 36},
    NewGood{"BEB-0902", "Jugo de guanábana 500 ml", "PALMAREAL", "BEBIDAS", 22.5, 36},
    NewGood{"LIM-0901", "Esponja de fregar", "", "LIMPIEZA", 9.75, 18},
    NewGood{"FER-0901", "Candado de clave - 40 mm", "TALLER9", "FERRETERIA", 310, 450},
    NewGood{"FER-0902", "Cerradura para puerta/portón", "CERROJO", "FERRETERIA", 890, 1295},
    NewGood{"HOG-0901", "Paño de cocina", "", "HOGAR", 35, 60},
    NewGood{"PAP-0901", "Bolígrafo azul", "LALOMA", "PAPELERIA", 6.5, 12},
    NewGood{"PAP-0902", "Bolígrafo rojo", "LALOMA", "PAPELERIA", 6.5, 12},
};

struct Phone {
  std::string_view model, brand, technology;
  double price, cost;
};

constexpr std::array phones = {
    Phone{"Telmar Brisa 3", "Telmar", "Teléfono GSM", 3'490, 2'610},
    Phone{"Telmar Brisa 3 Refurbished", "Telmar", "Teléfono GSM", 2'290, 1'700},
    Phone{"Telmar Brisa 5", "Telmar", "Teléfono UMTS/GSM", 5'990, 4'480},
    Phone{"Telmar Oleaje EVDO", "Telmar", "Teléfono CDMA", 4'150, 3'105},
    Phone{"Telmar Oleaje Plus EVDO", "Telmar", "Teléfono CDMA", 4'950, 3'700},
    Phone{"Orinoko Vergatario 2", "Orinoko", "Teléfono CDMA", 1'250, 930},
    Phone{"Orinoko Vergatario 3", "Orinoko", "Teléfono GSM", 1'490, 1'115},
    Phone{"Orinoko Auyantepui Y210", "Orinoko", "Teléfono GSM", 6'800, 5'100},
    Phone{"Orinoko U2801", "Orinoko", "Modem USB UMTS", 2'150, 1'600},
    Phone{"Orinoko C5120", "Orinoko", "Modem CDMA", 1'950, 1'450},
    Phone{"Telmar Faro 4G", "Telmar", "Modem USB LTE", 3'950, 2'960},
    Phone{"Telmar Faro 4G Lite", "Telmar", "Modem USB LTE", 3'250, 2'440},
};

/// A dearer price, ended on 5 or 0 as price tags are.
double Raised(Currency price) {
  const int raised = static_cast<int>(price.ToDouble()) * 107 / 100;
  return raised + 5 - raised % 5;
}

/// One item as the supplier lists it now: most as they were, some dearer, some whose box has a price of its own.
Cells ListedItem(const DemoItem& item, DemoRandom& random) {
  const double cost = item.cost.ToDouble() + (random.Chance(20) ? 1.25 : 0);
  const double price = random.Chance(25) ? Raised(item.priceWithTax) : item.priceWithTax.ToDouble();
  Cells cells{item.code, item.description, item.brand, item.department, cost, price};
  if (item.boxOf > 0 && random.Chance(10)) {
    const double pieces = item.boxOf;
    cells.insert(cells.end(), {NewCell(), "CAJA", pieces, price * pieces * 0.95, cost * pieces});
  }
  return cells;
}

void WritePrices(SpreadsheetApplication& spreadsheets, const std::string& templatePath, const std::string& path) {
  const DemoCatalogue catalogue = MakeDemoCatalogue();
  const auto workbook = spreadsheets.CreateFromTemplate(templatePath, templateHeadingRows);
  DemoRandom random(2024);
  for (const DemoItem& item : catalogue.items) workbook->AppendRow(ListedItem(item, random));
  for (const NewGood& good : newGoods) {
    workbook->AppendRow(Cells{good.code, good.description, good.brand, good.department, good.cost, good.price});
  }
  // What a supplier has not priced yet is not processed, and the review says why.
  workbook->AppendRow(Cells{catalogue.items.front().code, "Precio por confirmar", {}, {}, {}, "por confirmar"});
  workbook->SaveAs(path);
}

void WriteMovilnet(SpreadsheetApplication& spreadsheets, const std::string& path) {
  const auto workbook = spreadsheets.CreateFromTemplate({}, 0);
  workbook->AppendRow(Cells{"Lista de precios de equipos"}, NewRowStyle::Heading);
  workbook->AppendRow(Cells{"Precios con impuesto incluido, en pesos"});
  workbook->AppendRow(Cells{"Modelo", "Marca", "Tipo", {}, "PVP", {}, "Costo"}, NewRowStyle::Heading);
  for (const Phone& phone : phones) {
    workbook->AppendRow(Cells{phone.model, phone.brand, phone.technology, {}, phone.price, {}, phone.cost});
  }
  workbook->SaveAs(path);
}

}  // namespace

void WriteDemoWorkbooks(const DemoPlaces& places, Date today) {
  const fs::path templates = fs::path(places.folder) / "PlantillasImpresion" / "Excel";
  const fs::path examples(places.examples);
  const std::string templatePath = templates / "FormatoMigracion001.XLT";
  PosixFileHelper files(places.folder);
  files.MakeFolder(templates.native());
  WriteDemoFile(templatePath, data::templateXls);
  WriteDemoFile(templates / "FormatoMigracion001.xlsx", data::templateXlsx);
  WriteDemoFile(examples / "precios.xls", data::examplePricesXls);
  const DayClock clock(today);
  DeferredSpreadsheetApplication spreadsheets(clock, files, places.exportFolder);
  WritePrices(spreadsheets, templatePath, examples / "precios.xlsx");
  WriteMovilnet(spreadsheets, examples / "movilnet.xlsx");
}

}  // namespace tolvan
