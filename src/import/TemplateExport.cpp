#include "import/TemplateExport.h"

#include <array>

#include "base/Text.h"
#include "import/CellValues.h"

namespace tolvan {
namespace {

constexpr std::string_view includeData = "¿Desea incluir los datos?";

constexpr const char* noCost = "el Item no tiene costo registrado";

NewCell AmountCellOf(const std::optional<Currency>& amount) {
  return amount ? NewCell(AmountInCell(*amount).ToDouble()) : NewCell();
}

/// A text that no cell holds would refuse the workbook.
void RequireFits(std::string& text, std::string_view name, Remarks& remarks) {
  if (FitsCell(text)) return;
  text.clear();
  remarks.push_back(std::string(name) + " del Item no cabe en una celda");
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
  remarks_.clear();
  spreadsheets_->Start();
  auto workbook = spreadsheets_->CreateFromTemplate(templatePath, templateHeadingRows);
  if (withData) Fill(*workbook);
  return workbook;
}

void TemplateExport::Fill(NewWorkbook& workbook) {
  HostApplication& application = context_->application;
  const TaxTable taxes = TaxTable::Load(application.Database());
  const Interruption& interruption = context_->services.UserInterruption();
  CountReadCodes();
  const auto items = application.Database().OpenRecordset(AllItemsStatement(application.InventoryFlag(), defaultCode));
  for (; !items->AtEnd(); items->MoveNext()) {
    if (interruption.Requested()) throw HostError(HostErrorKind::Interrupted, "");
    ItemRecord item = ItemRecord::Read(*items, taxes);
    Append(workbook, item);
  }
}

void TemplateExport::CountReadCodes() {
  readCodes_.clear();
  const auto codes = context_->application.Database().OpenRecordset(SqlStatement("SELECT idItem FROM Items"));
  for (; !codes->AtEnd(); codes->MoveNext()) ++readCodes_[CleanCode(codes->Text(0), itemCodeLength)];
}

Remarks TemplateExport::CodeRemarks(const std::string& code) const {
  const std::string read = CleanCode(code, itemCodeLength);
  if (read.empty()) return {"el código queda vacío al importarlo: la fila no se procesará"};
  Remarks remarks;
  if (read != ToUpper(code)) {
    remarks.push_back("el código se lee " + read + " al importarlo, sin espacios y hasta " +
                      std::to_string(itemCodeLength) + " caracteres: este Item no se encontrará");
  }
  const auto same = readCodes_.find(read);
  if (same != readCodes_.end() && same->second > 1) {
    remarks.push_back("otro Item tiene un código que también se lee " + read + ": la fila de uno cambiaría al otro");
  }
  return remarks;
}

void TemplateExport::Append(NewWorkbook& workbook, ItemRecord& item) {
  Remarks remarks = CodeRemarks(item.code);
  remarks.insert(remarks.end(), item.unusable.begin(), item.unusable.end());
  if (item.costIsNull) remarks.emplace_back(noCost);
  RequireFits(item.code, "el código", remarks);
  RequireFits(item.description, "la descripción", remarks);
  RequireFits(item.brand, "la marca", remarks);
  RequireFits(item.department, "el departamento", remarks);
  std::string told;
  for (const std::string& remark : remarks) AppendSentence(told, remark);
  const std::array<NewCell, 7> cells{
      item.code, item.description, item.brand, item.department, AmountCellOf(item.cost), AmountCellOf(item.withTax),
      told};
  workbook.AppendRow(std::span(cells).first(told.empty() ? cells.size() - 1 : cells.size()));
  ++rows_;
  if (!remarks.empty()) {
    const auto sheetRow = templateHeadingRows + static_cast<std::uint32_t>(rows_);
    remarks_.push_back({sheetRow, item.code, std::move(remarks)});
  }
}

}  // namespace tolvan
