// New workbooks from the product's template, empty or with the store's items, which can be edited and imported back.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

#include "host/SpreadsheetApplication.h"
#include "import/ItemStatements.h"
#include "services/ComponentContext.h"

namespace tolvan {

inline constexpr std::uint32_t templateHeadingRows = 4;

class TemplateExport {
 public:
  /// Both must outlive this object.
  TemplateExport(const ComponentContext& context, SpreadsheetApplication& spreadsheets)
      : context_(&context), spreadsheets_(&spreadsheets) {}

  /// Asks whether to include the data, makes the workbook and leaves it open for the user. False when it could not be
  /// made; then the text is appended to `errorText` after a line break (CR LF).
  bool AbrirPlantilla(const std::string& templatePath, std::string& errorText);

  /// A workbook from the template, filled when `withData`. Throws HostError, Interrupted when the user asked to stop.
  std::unique_ptr<NewWorkbook> Make(const std::string& templatePath, bool withData);

  /// How many items the last workbook was filled with.
  std::int32_t Rows() const { return rows_; }

  /// What its column G says of items that will not come back unchanged.
  struct ItemRemarks {
    std::uint32_t sheetRow = 0;
    std::string code;
    Remarks remarks;
  };
  const std::vector<ItemRemarks>& ItemsWithRemarks() const { return remarks_; }

  /// "PlantillasImpresion/Excel/FormatoMigracion001.XLT" below the application folder.
  static std::string TemplatePath(AppServices& services);

 private:
  void Fill(NewWorkbook& workbook);
  void CountReadCodes();
  Remarks CodeRemarks(const std::string& code) const;
  void Append(NewWorkbook& workbook, ItemRecord& item);

  const ComponentContext* context_;
  SpreadsheetApplication* spreadsheets_;
  std::int32_t rows_ = 0;
  std::vector<ItemRemarks> remarks_;
  std::unordered_map<std::string, int> readCodes_;  // how many items have a code that an import reads so
};

}  // namespace tolvan
