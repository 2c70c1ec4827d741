// A workbook made from the template, empty or with the items of the store.
#include <algorithm>

#include "base/Text.h"
#include "cli/CommandCall.h"
#include "cli/commands/AllCommands.h"
#include "import/TemplateExport.h"
#include "store/DeferredProviders.h"

namespace tolvan {
namespace {

constexpr const char* templateMissing =
    "No se encuentra el archivo de plantilla. Favor actualice Tolvan para reponer el archivo de plantilla";

constexpr std::size_t mostNamed = 20;

/// Names the items that will not come back from the workbook as they are; all of them are marked in it.
void PrintRemarks(CommandCall& call, const std::vector<TemplateExport::ItemRemarks>& items) {
  for (std::size_t index = 0; index < std::min(items.size(), mostNamed); ++index) {
    const TemplateExport::ItemRemarks& item = items[index];
    std::string remarks;
    for (const std::string& remark : item.remarks) AppendSentence(remarks, remark);
    call.PrintMessage("Fila " + std::to_string(item.sheetRow) + ", Item " + item.code + ": " + remarks);
  }
  if (items.size() <= mostNamed) return;
  call.PrintMessage("… y " + std::to_string(items.size() - mostNamed) + " más: vea la columna G del libro");
}

ExitCode RunPlantilla(CommandCall& call) {
  const std::string output = call.PathArgument();
  const bool withData = call.Given().Has("--con-datos");
  CommandHost& host = call.Host();
  const ComponentContext& context = host.Context();
  if (withData) static_cast<void>(host.RequireDatabase());
  const std::string templatePath = TemplateExport::TemplatePath(context.services);
  if (!context.Files().FileExists(templatePath)) throw CommandFailure(ExitCode::Failed, templateMissing);
  DeferredSpreadsheetApplication spreadsheets(call.SystemClock(), context.Files(),
                                              context.services.ApplicationFolder() + "Exportar");
  TemplateExport filled(context, spreadsheets);
  filled.Make(templatePath, withData)->SaveAs(output);
  PrintRemarks(call, filled.ItemsWithRemarks());
  call.Print({{"archivo", output, "Archivo"}, {"filas", filled.Rows(), "Filas"}});
  return ExitCode::Done;
}

}  // namespace

Command PlantillaCommand() {
  return {.name = "plantilla",
          .summary = "Escribe un libro nuevo desde la plantilla, vacío o con los Items actuales",
          .arguments = {{.name = "SALIDA", .summary = "el libro que se escribe (.xlsx)", .isPath = true}},
          .options = {{.name = "--con-datos", .summary = "incluye los Items con sus costos y precios"}},
          .examples = {{"plantilla lista.xlsx --con-datos", "para cambiar precios y volver a importarla"}},
          .run = &RunPlantilla};
}

}  // namespace tolvan
