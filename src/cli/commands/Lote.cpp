// The upload transport batches of the configured company and site.
#include <algorithm>
#include <array>
#include <ostream>

#include "cli/CommandCall.h"
#include "cli/commands/AllCommands.h"
#include "transport/LoteTransporte.h"

namespace tolvan {
namespace {

/// What there is to report.
struct BatchReport {
  std::optional<std::int64_t> number;  ///< the batch that is open, or was until now
  std::int64_t closed = 0;
  std::string state;      ///< shown beside the number
  std::string nothing{};  ///< why nothing was done; empty when something was
};

BatchReport Open(LoteTransporte& batches) {
  const OpenedLote batch = batches.Open();
  BatchReport report{.number = batch.number, .state = "abierto"};
  if (!batch.isNew) report.nothing = "No se abrió otro lote: ya hay uno abierto.";
  return report;
}

BatchReport Find(LoteTransporte& batches) {
  BatchReport report{.number = batches.Find(), .state = "abierto"};
  if (!report.number) report.nothing = "No hay ningún lote abierto.";
  return report;
}

BatchReport Close(LoteTransporte& batches) {
  const ClosedLotes closed = batches.Close();
  BatchReport report{.number = closed.newest, .closed = closed.count, .state = "cerrado"};
  if (closed.count == 0) report.nothing = "No se cerró nada: no hay ningún lote abierto.";
  return report;
}

struct Task {
  std::string_view word;
  BatchReport (*run)(LoteTransporte& batches);
};

constexpr std::array tasks{Task{"abrir", &Open}, Task{"buscar", &Find}, Task{"cerrar", &Close}};

void Print(CommandCall& call, const BatchReport& report) {
  if (!report.nothing.empty()) call.PrintMessage(report.nothing);
  if (call.WantsJson()) {
    Result result{{"lote", nullptr}, {"cerrados", report.closed}};
    if (report.number) result.front().value = *report.number;
    return call.PrintJson(result);
  }
  if (report.number) call.Out() << "Lote:     " << *report.number << " (" << report.state << ")\n";
  if (report.closed > 0) call.Out() << "Cerrados: " << report.closed << '\n';
}

ExitCode RunLote(CommandCall& call) {
  const std::string& word = call.Given().arguments.front();
  const auto* const task = std::ranges::find(tasks, word, &Task::word);
  if (task == std::end(tasks)) {
    throw CommandFailure(ExitCode::Usage, "La orden lote no conoce \"" + word + "\": use abrir, buscar o cerrar");
  }
  CommandHost& host = call.Host();
  const HostApplication& application = host.Context().application;
  LoteTransporte batches(host.RequireDatabase(), application.Dialect(), application.CompanyId(), application.SiteId());
  Print(call, task->run(batches));
  return ExitCode::Done;
}

}  // namespace

Command LoteCommand() {
  return {.name = "lote",
          .summary = "Abre, busca o cierra el lote de transporte de subida de la compañía y sede configuradas",
          .arguments = {{.name = "abrir|buscar|cerrar",
                         .summary = "lo que se hace",
                         .words = {"abrir", "buscar", "cerrar"}}},
          .notes =
              "Cada sede tiene a lo sumo un lote abierto: abrir cuando ya hay uno da su número, y cerrar cuando no "
              "hay ninguno no hace nada.",
          .examples = {{"lote buscar", "da el número del lote abierto"}},
          .run = &RunLote};
}

}  // namespace tolvan
