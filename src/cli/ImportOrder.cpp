#include "cli/ImportOrder.h"

#include <filesystem>
#include <nlohmann/json.hpp>
#include <ostream>

#include "cli/AbsolutePath.h"
#include "cli/CommandHost.h"
#include "cli/ConsoleDialogs.h"
#include "import/ImportReport.h"
#include "store/DeferredSpreadsheetApplication.h"
#include "system/NettleHashService.h"
#include "ui/ImportLauncher.h"

namespace tolvan {
namespace {

ReviewPlan PlanOf(OrderCall& call, std::vector<RowChange> changes) {
  ReviewPlan plan;
  plan.changes = std::move(changes);
  plan.simulate = call.Given().Has("--simular");
  plan.reportPath = AbsolutePath(call.Given().Value("--informe"));
  if (plan.reportPath.empty()) return plan;
  if (!IsReportPath(plan.reportPath)) {
    throw CommandFailure(ExitCode::Usage, "El informe debe terminar en .csv o .xlsx: " + plan.reportPath);
  }
  std::error_code ignored;
  if (std::filesystem::equivalent(plan.reportPath, AbsolutePath(call.Given().arguments.front()), ignored)) {
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

ExitCode Report(OrderCall& call, const ReviewPlan& plan, const ReviewResult& result) {
  if (call.WantsJson()) call.PrintJson(result.document);
  const std::string nothing = ReasonForNothing(plan, result);
  if (!nothing.empty()) call.Messages() << nothing << '\n';
  if (result.failure.empty()) return ExitCode::Done;
  if (!result.untold.empty()) call.Messages() << ForTerminal(result.untold) << '\n';
  return ExitCode::Failed;
}

/// The end of a call that came to no review.
ExitCode ReportFailure(OrderCall& call, const ImportOutcome& outcome) {
  if (!outcome.shown) throw CommandFailure(ExitCode::Failed, FailureText(outcome));
  if (call.WantsJson()) {
    const nlohmann::ordered_json document{{"aplicado", false}, {"error", ForTerminal(FailureText(outcome))}};
    call.PrintJson(document.dump(2, ' ', false, nlohmann::json::error_handler_t::replace));
  }
  return ExitCode::Failed;
}

}  // namespace

std::vector<OptionDefinition> ImportOptions() {
  return {{.name = "--simular", .summary = "lee, clasifica y muestra los renglones, sin aplicar nada"},
          {.name = "--informe",
           .summary = "escribe aquí (.csv o .xlsx) los Items creados y cambiados y lo que no se procesó",
           .valueName = "RUTA",
           .isPath = true}};
}

ExitCode RunImport(OrderCall& call, int action, std::vector<RowChange> changes) {
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
    return std::make_unique<CommandReview>(call, context, spreadsheets, *importer, plan, result);
  };
  TerminalStatus status(call.Messages(), call.MessagesColumns(), call.ShowsProgress());
  ImportLauncher launcher(context, {spreadsheets, hashes, makeReview}, status,
                          [&](PriceImporter& made) { importer = &made; });
  if (plan.simulate) launcher.DoNotRemember();
  launcher.SetWorkbook(action, AbsolutePath(call.Given().arguments.front()));
  std::string errorText;
  bool silent = false;
  if (!launcher.Launch(action, errorText, silent)) return ReportFailure(call, launcher.LastOutcome());
  return Report(call, plan, result);
}

}  // namespace tolvan
