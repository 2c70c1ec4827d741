// The import of the taxpayer registry.
#include <istream>
#include <ostream>

#include "cli/CommandCall.h"
#include "cli/TerminalProgress.h"
#include "cli/commands/AllCommands.h"
#include "fiscal/RegistryReport.h"
#include "fiscal/TaxpayerRegistryImport.h"

namespace tolvan {
namespace {

/// The report of rejected lines; the file that is imported is never its place.
std::unique_ptr<WholeFile> OpenReport(CommandCall& call, FileHelper& files) {
  if (!call.Given().Has("--rechazos")) return nullptr;
  const std::string path = call.PathOption("--rechazos");
  if (files.IsSameFile(path, call.PathArgument())) {
    throw CommandFailure(ExitCode::Usage, "El archivo de rechazos no puede ser el mismo que se importa");
  }
  return files.CreateWhole(path);
}

/// Why a run that was not stopped registered nobody; empty when it did.
std::string ReasonForNothing(const RegistryCounts& counts) {
  if (counts.newCustomers > 0) return {};
  if (counts.present > 0) return "No hay contribuyentes nuevos: los del archivo ya estaban registrados.";
  if (counts.errors > 0) return "Ninguna línea tiene un contribuyente que se pueda registrar: revise el archivo.";
  return "El archivo no tiene ninguna línea con contenido.";
}

Result ResultOf(const RegistryCounts& counts) {
  return {{"nuevos", counts.newCustomers, "Nuevos"},
          {"no_registrados", counts.notRegistered, "No registrados"},
          {"errores", counts.errors, "Errores"},
          {"lineas", counts.lines, "Líneas"}};
}

ExitCode Report(CommandCall& call, const RegistryCounts& counts) {
  call.Print(ResultOf(counts));
  const std::string reason = ReasonForNothing(counts);
  if (!reason.empty()) call.PrintMessage(reason);
  if (counts.skipped > 0) {
    call.PrintMessage("Líneas omitidas por no tener el separador |: " + std::to_string(counts.skipped));
  }
  return counts.errors > 0 ? ExitCode::Rejected : ExitCode::Done;
}

ExitCode RunImportarRnc(CommandCall& call) {
  CommandHost& host = call.Host();
  const ComponentContext& context = host.Context();
  static_cast<void>(host.RequireDatabase());
  const std::unique_ptr<WholeFile> reportFile = OpenReport(call, context.Files());
  std::optional<RejectionReport> rejections;
  if (reportFile) rejections.emplace(*reportFile);
  clsCallBackProgreso progress;
  // The component's box would only repeat the counts that are the command's result.
  std::istream noInput(nullptr);
  std::ostream nowhere(nullptr);
  ConsoleDialogs dialogs(noInput, nowhere, false, false);
  TaxpayerRegistryImport import(RegistryHostOf(context, dialogs, progress), rejections ? &*rejections : nullptr);
  TerminalProgress terminal(
      call.Messages(), call.MessagesColumns(), [&] { return import.Counts().lines; }, "líneas");
  if (call.ShowsProgress()) progress.EstablecerControles(&terminal, &terminal, &terminal, nullptr, nullptr);
  import.SetRutaArchivo(call.PathArgument());
  const ActionReport report = import.Import();
  progress.EstablecerControles(nullptr, nullptr, nullptr, nullptr, nullptr);
  const auto result = report.DetailsAs<RegistryImportResult>();
  if (!report.done) {
    if (result.end != RegistryImportEnd::NotRun && call.WantsJson()) {
      Result document = ResultOf(result.counts);
      document.push_back({"error", ForTerminal(report.text)});
      call.PrintJson(document);
    }
    throw CommandFailure(ExitCode::Failed, report.text);
  }
  if (rejections) rejections->Commit();
  return Report(call, result.counts);
}

}  // namespace

Command ImportarRncCommand() {
  return {.name = NameOf(action::taxpayerRegistry),
          .summary = SummaryOf(action::taxpayerRegistry),
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
                        "registra los contribuyentes y deja escrito lo que no se pudo"}},
          .run = &RunImportarRnc};
}

}  // namespace tolvan
