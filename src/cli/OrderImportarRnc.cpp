#include "cli/OrderImportarRnc.h"

#include <istream>
#include <nlohmann/json.hpp>
#include <ostream>

#include "cli/AbsolutePath.h"
#include "cli/CommandHost.h"
#include "cli/ConsoleDialogs.h"
#include "cli/TerminalProgress.h"
#include "fiscal/RejectionReport.h"
#include "fiscal/TaxpayerRegistryImport.h"

namespace tolvan {
namespace {

/// The report of rejected lines; the file that is imported is never its place.
std::unique_ptr<WholeFile> OpenReport(OrderCall& call, FileHelper& files) {
  if (!call.Given().Has("--rechazos")) return nullptr;
  const std::string path = AbsolutePath(call.Given().Value("--rechazos"));
  if (files.IsSameFile(path, AbsolutePath(call.Given().arguments.front()))) {
    throw CommandFailure(ExitCode::Usage, "El archivo de rechazos no puede ser el mismo que se importa");
  }
  return files.CreateWhole(path);
}

/// Why a run that came to its end registered nobody; empty when it did.
std::string ReasonForNothing(const RegistryCounts& counts) {
  if (counts.newCustomers > 0) return {};
  if (counts.present > 0) return "No hay contribuyentes nuevos: los del archivo ya estaban registrados.";
  if (counts.errors > 0) return "Ninguna línea tiene un contribuyente que se pueda registrar: revise el archivo.";
  return "El archivo no tiene ninguna línea con contenido.";
}

void PrintResult(OrderCall& call, const RegistryCounts& counts, const std::string& failure) {
  if (call.WantsJson()) {
    nlohmann::ordered_json document{{"nuevos", counts.newCustomers},
                                    {"no_registrados", counts.notRegistered},
                                    {"errores", counts.errors},
                                    {"lineas", counts.lines}};
    if (!failure.empty()) document["error"] = failure;
    call.PrintJson(document.dump(2, ' ', false, nlohmann::json::error_handler_t::replace));
    return;
  }
  call.Out() << "Nuevos:         " << counts.newCustomers << '\n'
             << "No registrados: " << counts.notRegistered << '\n'
             << "Errores:        " << counts.errors << '\n'
             << "Líneas:         " << counts.lines << '\n';
}

ExitCode Report(OrderCall& call, const RegistryCounts& counts) {
  PrintResult(call, counts, {});
  const std::string reason = ReasonForNothing(counts);
  if (!reason.empty()) call.Messages() << reason << '\n';
  if (counts.skipped > 0) call.Messages() << "Líneas omitidas por no tener el separador |: " << counts.skipped << '\n';
  return counts.errors > 0 ? ExitCode::Rejected : ExitCode::Done;
}

}  // namespace

OrderDefinition OrderImportarRnc::Definition() const {
  return {.name = "importar-rnc",
          .summary = "Importa el registro de contribuyentes de la DGII a la tabla de clientes",
          .arguments = {{.name = "ARCHIVO",
                         .summary = "el archivo de texto publicado por la DGII, o el .zip que lo contiene",
                         .isPath = true}},
          .options = {{.name = "--rechazos",
                       .summary = "escribe aquí cada línea rechazada, con su número y la causa",
                       .valueName = "RUTA",
                       .isPath = true}},
          .notes =
              "Los clientes que ya existen no se cambian. Si se interrumpe, lo registrado queda guardado y la "
              "siguiente vez continúa por sí sola.",
          .examples = {{"importar-rnc DGII_RNC.TXT --rechazos rechazos.txt",
                        "registra los contribuyentes y deja escrito lo que no se pudo"}}};
}

ExitCode OrderImportarRnc::Run(OrderCall& call) const {
  CommandHost& host = call.Host();
  const ComponentContext& context = host.Context();
  DatabaseServices& database = host.RequireDatabase();
  const std::unique_ptr<WholeFile> reportFile = OpenReport(call, context.Files());
  std::optional<RejectionReport> report;
  if (reportFile) report.emplace(*reportFile);
  clsCallBackProgreso progress;
  // The component's box would only repeat the counts that are the order's result.
  std::istream noInput(nullptr);
  std::ostream nowhere(nullptr);
  ConsoleDialogs dialogs(noInput, nowhere, false, false);
  TaxpayerRegistryImport import({database, context.application.Dialect(), context.Files(), context.services.Archives(),
                                 dialogs, call.UserInterruption(), progress},
                                report ? &*report : nullptr);
  TerminalProgress terminal(
      call.Messages(), call.MessagesColumns(), [&] { return import.Counts().lines; }, "líneas");
  if (call.ShowsProgress()) progress.EstablecerControles(&terminal, &terminal, &terminal, nullptr, nullptr);
  import.SetRutaArchivo(AbsolutePath(call.Given().arguments.front()));
  std::string message;
  const bool finished = import.ImportarArchivoRNC(message);
  progress.EstablecerControles(nullptr, nullptr, nullptr, nullptr, nullptr);
  if (!finished) {
    const std::string text = ForTerminal(message);
    if (import.End() != RegistryImportEnd::NotRun && call.WantsJson()) PrintResult(call, import.Counts(), text);
    throw CommandFailure(ExitCode::Failed, message);
  }
  if (report) report->Commit();
  return Report(call, import.Counts());
}

}  // namespace tolvan
