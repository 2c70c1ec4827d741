#include "cli/OrderPlantilla.h"

#include <algorithm>
#include <nlohmann/json.hpp>
#include <ostream>

#include "cli/AbsolutePath.h"
#include "cli/CommandHost.h"
#include "cli/ConsoleDialogs.h"
#include "import/TemplateExport.h"
#include "store/DeferredSpreadsheetApplication.h"

namespace tolvan {
namespace {

constexpr const char* templateMissing =
    "No se encuentra el archivo de plantilla. Favor actualice Tolvan para reponer el archivo de plantilla";

constexpr std::size_t mostTold = 20;

/// The items that will not come back from the workbook as they are; all of them are marked in it.
void TellRemarks(OrderCall& call, const std::vector<TemplateExport::ItemRemarks>& items) {
  for (std::size_t index = 0; index < std::min(items.size(), mostTold); ++index) {
    const TemplateExport::ItemRemarks& item = items[index];
    std::string told;
    for (const std::string& remark : item.remarks) AppendSentence(told, remark);
    call.Messages() << ForTerminal("Fila " + std::to_string(item.sheetRow) + ", Item " + item.code + ": " + told)
                    << '\n';
  }
  if (items.size() <= mostTold) return;
  call.Messages() << "… y " << items.size() - mostTold << " más: vea la columna G del libro\n";
}

}  // namespace

OrderDefinition OrderPlantilla::Definition() const {
  return {.name = "plantilla",
          .summary = "Escribe un libro nuevo desde la plantilla, vacío o con los Items actuales",
          .arguments = {{.name = "SALIDA", .summary = "el libro que se escribe (.xlsx)", .isPath = true}},
          .options = {{.name = "--con-datos", .summary = "incluye los Items con sus costos y precios"}},
          .examples = {{"plantilla lista.xlsx --con-datos", "para cambiar precios y volver a importarla"}}};
}

ExitCode OrderPlantilla::Run(OrderCall& call) const {
  const std::string output = AbsolutePath(call.Given().arguments.front());
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
  TellRemarks(call, filled.ItemsWithRemarks());
  if (call.WantsJson()) {
    const nlohmann::ordered_json document{{"archivo", output}, {"filas", filled.Rows()}};
    call.PrintJson(document.dump(2, ' ', false, nlohmann::json::error_handler_t::replace));
  } else {
    call.Out() << "Archivo: " << output << '\n' << "Filas:   " << filled.Rows() << '\n';
  }
  return ExitCode::Done;
}

}  // namespace tolvan
