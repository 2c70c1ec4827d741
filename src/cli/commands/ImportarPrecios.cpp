// A command for each importer of price lists in the table of actions: the routine of the options window, with the
// command's review in the place of its window.
#include <algorithm>
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

std::vector<RowChange> ChangesOf(CommandCall& call) {
  std::vector<RowChange> changes;
  for (const GivenOption& option : call.Given().options) {
    if (option.name == associate || option.name == setCode) changes.push_back(ChangeOf(option));
  }
  return changes;
}

/// Imports the workbook that the call names.
ExitCode Import(CommandCall& call, const Action& action) {
  const ReviewPlan plan = PlanOf(call, ChangesOf(call));
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
  const bool reviewed = LaunchImport(action, call.PathArgument(),
                                     {.context = context,
                                      .tools = {spreadsheets, hashes, makeReview},
                                      .window = status,
                                      .remembersFile = !plan.simulate,
                                      .made = [&](PriceImporter& made) { importer = &made; }},
                                     outcome);
  if (!reviewed) return ReportFailure(call, outcome);
  return Report(call, plan, result);
}

std::vector<OptionDefinition> OptionsOf(const Action& action) {
  std::vector<OptionDefinition> options{
      {.name = "--simular", .summary = "lee, clasifica y muestra los renglones, sin aplicar nada"},
      {.name = "--informe",
       .summary = "escribe aquí (.csv o .xlsx) los Items creados y cambiados y lo que no se procesó",
       .valueName = "RUTA",
       .isPath = true}};
  if (!action.changesRows) return options;
  options.push_back({.name = associate,
                     .summary = "asocia el renglón a un Item existente; sin ITEM quita la asociación",
                     .valueName = "FILA=ITEM",
                     .repeated = true});
  options.push_back({.name = setCode,
                     .summary = "establece el código con que se creará el Item del renglón",
                     .valueName = "FILA=CODIGO",
                     .repeated = true});
  return options;
}

std::string NotesOf(const Action& action) {
  std::string notes = "Todo se aplica en una sola transacción, o nada.";
  if (action.changesRows) {
    notes +=
        " FILA cuenta los renglones leídos, desde 1, como «fila» en --json; con una h delante es la fila de la hoja, "
        "como en la tabla: --asociar h4=ITEM. --asociar y --codigo valen en el orden en que se dan.";
  }
  return notes;
}

std::vector<ExampleDefinition> ExamplesOf(const Action& action) {
  const std::string words = std::string(action.command) + " lista.xlsx ";
  std::vector<ExampleDefinition> examples{{words + "--simular", "muestra qué pasaría, sin cambiar nada"}};
  if (action.changesRows) {
    examples.push_back({words + "--asociar 3=TEL-0001", "une un renglón a un Item, y la importa"});
  } else {
    examples.push_back({words + "--informe cambios.csv", "la importa y deja escrito lo que cambió"});
  }
  return examples;
}

Command ImportCommand(const Action& action) {
  const char* const book = action.opensTemplate ? "el libro de Excel (.xls o .xlsx)" : "la lista (.xls o .xlsx)";
  return {.name = std::string(action.command),
          .summary = std::string(action.summary),
          .arguments = {{.name = "LIBRO", .summary = book, .isPath = true}},
          .options = OptionsOf(action),
          .notes = NotesOf(action),
          .examples = ExamplesOf(action),
          .run = [&action](CommandCall& call) { return Import(call, action); }};
}

}  // namespace

std::vector<Command> ImportCommands() {
  std::vector<Command> commands;
  for (const Action& action : ComponentActions()) {
    if (action.importer != nullptr && !action.command.empty()) commands.push_back(ImportCommand(action));
  }
  std::ranges::sort(commands, {}, &Command::name);
  return commands;
}

}  // namespace tolvan
