// The upload of day totals to the reporting server.
#include <ostream>

#include "cli/CommandCall.h"
#include "cli/TerminalProgress.h"
#include "cli/commands/AllCommands.h"
#include "export/SalesUpload.h"
#include "services/clsCallBackProgreso.h"

namespace tolvan {
namespace {

void PrintJson(CommandCall& call, const SalesUploadResult& result, const std::string& failure) {
  std::vector<std::string> days;
  for (const Date day : result.days) days.push_back(day.ToIsoText());
  Result document{{"dias", days}, {"completo", result.complete}};
  if (!failure.empty()) document.push_back({"error", failure});
  call.PrintJson(document);
}

void PrintText(std::ostream& out, const SalesUploadResult& result) {
  for (const Date day : result.days) out << day.ToIsoText() << '\n';
  out << "Días enviados: " << result.days.size() << (result.complete ? "" : " (incompleto)") << '\n';
}

ExitCode RunSubirVentas(CommandCall& call) {
  CommandHost& host = call.Host();
  static_cast<void>(host.RequireDatabase());
  clsCallBackProgreso progress;
  TerminalProgress terminal(call.Messages(), call.MessagesColumns(), {}, "días");
  if (call.ShowsProgress()) progress.EstablecerControles(&terminal, &terminal, &terminal, nullptr, nullptr);
  const ActionReport report = UploadSales(host.Context(), &progress);
  const auto result = report.DetailsAs<SalesUploadResult>();
  progress.EstablecerControles(nullptr, nullptr, nullptr, nullptr, nullptr);
  const std::string failure = result.complete ? std::string() : ForTerminal(report.text);
  if (call.WantsJson()) {
    PrintJson(call, result, failure);
  } else {
    PrintText(call.Out(), result);
  }
  if (failure.empty()) {
    if (result.NothingPending()) call.PrintMessage(noDayPending);
    return ExitCode::Done;
  }
  throw CommandFailure(ExitCode::Failed, failure);
}

}  // namespace

Command SubirVentasCommand() {
  return {.name = NameOf(action::salesUpload),
          .summary = SummaryOf(action::salesUpload),
          .notes =
              "Envía los días que el servidor pide, uno por uno y en su orden. El servidor y la fecha de referencia "
              "son los de las opciones (SVentas_…); la fecha avanza hasta el último día enviado. Si se detiene, "
              "repetir la orden continúa donde haga falta: un día enviado dos veces no se cuenta dos veces.",
          .examples = {{"opciones SVentas_DireccionServidor=servidor.ejemplo.com", "antes de la primera vez"},
                       {"subir-ventas", "envía los días que faltan"}},
          .run = &RunSubirVentas};
}

}  // namespace tolvan
