// The import of a price list, in the template or of Movilnet: the routine of the options window, with the command's
// review in the place of its window.
#include <filesystem>

#include "base/Text.h"
#include "cli/CommandCall.h"
#include "cli/CommandReview.h"
#include "cli/TerminalProgress.h"
#include "cli/commands/AllCommands.h"
#include "import/ImportReport.h"
#include "store/DeferredProviders.h"
#include "system/posix/PosixServices.h"
#include "ui/ActionRoutines.h"

namespace tolvan {
namespace {

constexpr const char* associate = "--asociar";
constexpr const char* setCode = "--codigo";

/// "3=ITEM", or "h6=ITEM" by the row of the sheet.
RowChange ChangeOf(const GivenOption& option) {
  const bool associates = option.name == associate;
  const std::size_t sign = option.value.find('=');
  std::string_view number = std::string_view(option.value).substr(0, sign);
  const bool onSheet = number.starts_with('h');
  if (onSheet) number.remove_prefix(1);
  const auto row = ParseInteger(number);
  const bool usable = sign != std::string::npos && row && *row > 0;
  if (!usable || (!associates && sign + 1 == option.value.size())) {
    throw CommandFailure(ExitCode::Usage,
                         option.name + " espera " + (associates ? "FILA=ITEM" : "FILA=CODIGO") + ", no \"" +
                             option.value +
                             "\". FILA cuenta los renglones leídos; la fila de la hoja es h y su número");
  }
  return {.kind = associates ? RowChange::Kind::Associate : RowChange::Kind::SetCode,
          .row = *row,
          .onSheet = onSheet,
          .value = option.value.substr(sign + 1)};
}

ReviewPlan PlanOf(CommandCall& call, std::vector<RowChange> changes) {
  ReviewPlan plan;
  plan.changes = std::move(changes);
  plan.simulate = call.Given().Has("--simular");
  plan.reportPath = call.PathOption("--informe");
  if (plan.reportPath.empty()) return plan;
  if (!IsReportPath(plan.reportPath)) {
    throw CommandFailure(ExitCode::Usage, "El informe debe terminar en .csv o .xlsx: " + plan.reportPath);
  }
  std::error_code ignored;
  if (std::filesystem::equivalent(plan.reportPath, call.PathArgument(), ignored)) {
    throw CommandFailure(ExitCode::Usage, "El informe no puede ser el mismo libro que se importa");
  }
  return plan;
}

/// Why a review that ended well has applied nothing; empty when it has.
std::string ReasonForNothing(const ReviewPlan& plan, const ReviewResult& result) {
  if (result.applied || !result.failure.empty()) return {};
  if (plan.simulate) return "No se aplicó nada: se pidió --simular.";
  return "No se aplicó nada: no se confirmó la operación.";
}

ExitCode Report(CommandCall& call, const ReviewPlan& plan, const ReviewResult& result) {
  if (call.WantsJson()) call.PrintJsonText(result.document);
  const std::string nothing = ReasonForNothing(plan, result);
  if (!nothing.empty()) call.PrintMessage(nothing);
  if (result.failure.empty()) return ExitCode::Done;
  if (!result.untold.empty()) call.PrintMessage(result.untold);
  return ExitCode::Failed;
}

/// The end of a call that did not get as far as a review.
ExitCode ReportFailure(CommandCall& call, const ImportOutcome& outcome) {
  if (!outcome.shown) throw CommandFailure(ExitCode::Failed, FailureText(outcome));
  if (call.WantsJson()) call.PrintJson(Result{{"aplicado", false}, {"error", ForTerminal(FailureText(outcome))}});
  return ExitCode::Failed;
}

/// Imports the workbook that the call names by an action of the options window, 3 or 5.
ExitCode Import(CommandCall& call, int action, std::vector<RowChange> changes) {
  const ReviewPlan plan = PlanOf(call, std::move(changes));
  CommandHost& host = call.Host();
  const ComponentContext& context = host.Context();
  static_cast<void>(host.RequireDatabase());
  DeferredSpreadsheetApplication spreadsheets(call.SystemClock(), context.Files(),
                                              context.services.ApplicationFolder() + "Exportar");
  const NettleHashService hashes;
  ReviewResult result;
  PriceImporter* importer = nullptr;
  const auto makeReview = [&]() -> std::unique_ptr<ImportReview> {
    return std::make_unique<frmStatusImportar>(context, [&](frmStatusImportar& form) {
      return std::make_unique<CommandReview>(call, context, spreadsheets, *importer, plan, result, form);
    });
  };
  TerminalStatus status(call.Messages(), call.MessagesColumns(), call.ShowsProgress());
  ImportOutcome outcome;
  const bool reviewed = LaunchImport(FindAction(action), call.PathArgument(),
                                     {.context = context,
                                      .tools = {spreadsheets, hashes, makeReview},
                                      .window = status,
                                      .remembersFile = !plan.simulate,
                                      .made = [&](PriceImporter& made) { importer = &made; }},
                                     outcome);
  if (!reviewed) return ReportFailure(call, outcome);
  return Report(call, plan, result);
}

ExitCode RunExcel(CommandCall& call) {
  return Import(call, action::excelPrices, {});
}

ExitCode RunMovilnet(CommandCall& call) {
  std::vector<RowChange> changes;
  for (const GivenOption& option : call.Given().options) {
    if (option.name == associate || option.name == setCode) changes.push_back(ChangeOf(option));
  }
  return Import(call, action::movilnetPrices, std::move(changes));
}

/// --simular and --informe, and what one of the imports takes besides.
std::vector<OptionDefinition> ImportOptions(const std::vector<OptionDefinition>& more) {
  std::vector<OptionDefinition> options{
      {.name = "--simular", .summary = "lee, clasifica y muestra los renglones, sin aplicar nada"},
      {.name = "--informe",
       .summary = "escribe aquí (.csv o .xlsx) los Items creados y cambiados y lo que no se procesó",
       .valueName = "RUTA",
       .isPath = true}};
  options.insert(options.end(), more.begin(), more.end());
  return options;
}

}  // namespace

Command ImportarExcelCommand() {
  return {.name = "importar-excel",
          .summary = "Importa Items, costos y precios de un libro hecho con la plantilla",
          .arguments = {{.name = "LIBRO", .summary = "el libro de Excel (.xls o .xlsx)", .isPath = true}},
          .options = ImportOptions({}),
          .notes = "Todo se aplica en una sola transacción, o nada.",
          .examples = {{"importar-excel lista.xlsx --simular", "muestra qué pasaría, sin cambiar nada"},
                       {"importar-excel lista.xlsx --informe cambios.csv", "la importa y deja escrito lo que cambió"}},
          .run = &RunExcel};
}

Command ImportarMovilnetCommand() {
  return {.name = "importar-movilnet",
          .summary = "Importa la lista de precios de teléfonos y módems de Movilnet",
          .arguments = {{.name = "LIBRO", .summary = "la lista (.xls o .xlsx)", .isPath = true}},
          .options = ImportOptions({{.name = associate,
                                     .summary = "asocia el renglón a un Item existente; sin ITEM quita la asociación",
                                     .valueName = "FILA=ITEM",
                                     .repeated = true},
                                    {.name = setCode,
                                     .summary = "establece el código con que se creará el Item del renglón",
                                     .valueName = "FILA=CODIGO",
                                     .repeated = true}}),
          .notes =
              "Todo se aplica en una sola transacción, o nada. FILA cuenta los renglones leídos, desde 1, como «fila» "
              "en --json; con una h delante es la fila de la hoja, como en la tabla: --asociar h4=ITEM. --asociar y "
              "--codigo valen en el orden en que se dan.",
          .examples = {{"importar-movilnet lista.xlsx --simular", "muestra qué pasaría, sin cambiar nada"},
                       {"importar-movilnet lista.xlsx --asociar 3=TEL-0001", "une un renglón a un Item, y la importa"}},
          .run = &RunMovilnet};
}

}  // namespace tolvan
