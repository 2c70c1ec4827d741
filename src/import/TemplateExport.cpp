#include "import/TemplateExport.h"

#include <array>

#include "import/AmountCell.h"
#include "import/CellCleaning.h"
#include "import/ItemQueries.h"

namespace tolvan {
namespace {

constexpr std::string_view includeData = "¿Desea incluir los datos?";

std::array<NewCell, 6> CellsOf(const ItemRecord& item) {
  const std::optional<Currency> price = item.PriceWithTax();
  return {item.code,
          item.description,
          item.brand,
          item.department,
          AmountInCell(item.cost).ToDouble(),
          price ? NewCell(AmountInCell(*price).ToDouble()) : NewCell()};
}

}  // namespace

std::string TemplateExport::TemplatePath(AppServices& services) {
  const FileHelper& files = services.Files();
  const std::string folder = files.Join(files.Join(services.ApplicationFolder(), "PlantillasImpresion"), "Excel");
  return files.Join(folder, "FormatoMigracion001.XLT");
}

bool TemplateExport::AbrirPlantilla(const std::string& templatePath, std::string& errorText) {
  try {
    const bool withData = context_->UserDialogs().AskYesNo(context_->application.ProductName(), includeData, false);
    static_cast<void>(Make(templatePath, withData)->OpenForUser());
    return true;
  } catch (const HostError& error) {
    errorText.append("\r\n").append(TextForPeople(error));
    return false;
  }
}

std::unique_ptr<NewWorkbook> TemplateExport::Make(const std::string& templatePath, bool withData) {
  rows_ = 0;
  spreadsheets_->Start();
  auto workbook = spreadsheets_->CreateFromTemplate(templatePath, templateHeadingRows);
  if (withData) Fill(*workbook);
  return workbook;
}

void TemplateExport::Fill(NewWorkbook& workbook) {
  HostApplication& application = context_->application;
  const TaxTable taxes = TaxTable::Load(application.Database());
  const Interruption& interruption = context_->services.UserInterruption();
  const auto items = application.Database().OpenRecordset(AllItemsStatement(application.InventoryFlag(), defaultCode));
  for (; !items->AtEnd(); items->MoveNext()) {
    if (interruption.Requested()) throw HostError(HostErrorKind::Interrupted, "");
    const ItemRecord item = ItemRecord::Read(*items, taxes);
    workbook.AppendRow(CellsOf(item));
    ++rows_;
  }
}

}  // namespace tolvan
