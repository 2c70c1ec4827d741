#include "ui/ActionRoutines.h"

#include <memory>
#include <utility>

#include "base/Text.h"
#include "export/DailySalesExport.h"
#include "export/SalesUpload.h"
#include "fiscal/RegistryReport.h"
#include "fiscal/TaxpayerRegistryImport.h"
#include "import/TemplateExport.h"
#include "services/ResourceTexts.h"
#include "transport/TransportDocument.h"

namespace tolvan {
namespace {

constexpr std::string_view templateMissing =
    "No se encuentra el archivo de plantilla. Favor actualice Tolvan para reponer el archivo de plantilla";
constexpr std::string_view rejectedTitle = "Líneas rechazadas";
constexpr std::string_view rejectedQuestion =
    "Algunas líneas del archivo no se registraron. ¿Desea guardarlas en un archivo, con el número de cada línea y la "
    "causa?";

void Warn(const ComponentContext& context, std::string_view text) {
  context.UserDialogs().ShowMessage(MessageIcon::Exclamation, context.application.ProductName(), text);
}

/// Not to find the file chosen next time is no cause to refuse the import.
void RememberFile(const ComponentContext& context, const std::string& path) {
  const std::string failure = ChangeSettings(
      context.settings, [&](ImpExpSettings& settings) { settings.SetText(Setting::RutaUltimoArchivo, path); });
  if (!failure.empty()) Warn(context, failure);
}

/// Asks where the rejected lines are to go until they are there, or the user gives up.
void SaveRejections(const ComponentContext& context, const RejectionList& rejected, const std::string& imported) {
  Dialogs& dialogs = context.UserDialogs();
  for (;;) {
    const auto path = dialogs.PickFileToSave("Guardar líneas rechazadas", "Archivo de Texto|*.txt", "Rechazos RNC.txt");
    if (!path || path->empty()) return;
    try {
      if (context.Files().IsSameFile(*path, imported)) {
        dialogs.ShowMessage(MessageIcon::Exclamation, rejectedTitle, "Elija otro archivo: ese es el que se importó.");
        continue;
      }
      rejected.SaveTo(context.Files(), *path);
      return dialogs.ShowMessage(
          MessageIcon::Information, rejectedTitle,
          "Las líneas rechazadas se guardaron en:\r\n" + context.Files().FormatForDisplay(*path));
    } catch (const HostError& error) {
      dialogs.ShowMessage(MessageIcon::Exclamation, rejectedTitle, TextForPeople(error));
    }
  }
}

void OfferRejections(const ComponentContext& context, const RejectionList& rejected, const std::string& imported) {
  if (context.UserDialogs().AskYesNo(rejectedTitle, rejectedQuestion, true)) {
    SaveRejections(context, rejected, imported);
  }
}

/// Lines of a file that was refused as a whole, before it was run, are no rejections.
ActionReport ImportRegistry(const ActionRun& run, RejectionList& rejected) {
  if (run.file.empty()) return {.text = std::string(lineBreak).append(run.action.check->nothingChosen)};
  try {
    TaxpayerRegistryImport import(RegistryHostOf(run.context, run.context.UserDialogs(), run.progress), &rejected);
    import.SetRutaArchivo(run.file);
    ActionReport report = import.Import();
    if (report.DetailsAs<RegistryImportResult>().end == RegistryImportEnd::NotRun) rejected = {};
    return report;
  } catch (const HostError& error) {  // the database cannot be opened
    return {.text = std::string(lineBreak) + TextForPeople(error)};
  }
}

ActionReport WriteCollectorFile(const ComponentContext& context, XmlLibrary& library, CollectorPurpose purpose,
                                clsCallBackProgreso* progress, const std::string& path) {
  const HostApplication& application = context.application;
  basComponenteXML xml(library, context.UserDialogs(), application.ProductName(), application.XmlLibraryDownload());
  try {
    ItemDefinitionServices services = CollectorServices(context, xml);
    services.progress = progress;
    return ItemDefinitionFile(std::move(services)).Write(path, purpose);
  } catch (const HostError& error) {  // the database cannot be opened
    return {.text = std::string(lineBreak) + TextForPeople(error)};
  }
}

}  // namespace

ActionReport RunDailySales(ActionRun& run) {
  return DailySalesExport(run.context).Run(run.interactive);
}

ActionReport ExportDailySales(const ComponentContext& context, bool interactive) {
  ActionReport report = DailySalesExport(context).Run(interactive);
  if (interactive) ShowReport(context, report);
  return report;
}

ActionReport RunSalesUpload(ActionRun& run) {
  return UploadSales(run.context);
}

ActionReport RunImport(ActionRun& run) {
  ImportOutcome import;
  ActionReport report;
  report.done = LaunchImport(run.action, run.file,
                             {.context = run.context, .tools = run.tools.imports, .window = run.window}, import);
  report.told = report.done || import.shown;
  if (!report.told) report.text.append(lineBreak).append(FailureText(import));
  return report;
}

bool LaunchImport(const Action& action, const std::string& path, const ImportLaunch& launch, ImportOutcome& outcome) {
  outcome = {};
  if (path.empty()) {
    outcome.failure = action.check->nothingChosen;
    return false;
  }
  if (!launch.context.Files().FileExists(path)) {
    outcome.failure = "El archivo " + path + " no existe, favor seleccione la ubicación correcta del archivo";
    outcome.shown = true;
    Warn(launch.context, outcome.failure);
    return false;
  }
  if (launch.remembersFile) RememberFile(launch.context, path);
  const std::unique_ptr<PriceImporter> importer = action.importer(launch.context, launch.tools);
  if (launch.made) launch.made(*importer);
  importer->SetRutaArchivo(path);
  const bool reviewed = importer->Procesar(launch.window);
  outcome = importer->Outcome();
  return reviewed;
}

ActionReport RunRegistryImport(ActionRun& run) {
  RejectionList rejected;
  ActionReport report = ImportRegistry(run, rejected);
  if (!rejected.IsEmpty()) {
    run.afterwards = [&context = run.context, rejected = std::move(rejected), file = run.file] {
      OfferRejections(context, rejected, file);
    };
  }
  return report;
}

void OpenTemplate(const ComponentContext& context, SpreadsheetApplication& spreadsheets) {
  const std::string path = TemplateExport::TemplatePath(context.services);
  if (!context.Files().FileExists(path)) return Warn(context, templateMissing);
  std::string errorText;
  const bool opened = TemplateExport(context, spreadsheets).AbrirPlantilla(path, errorText);
  if (!opened) Warn(context, std::string_view(errorText).substr(lineBreak.size()));
}

void MakeCollectorFile(const ComponentContext& context, XmlLibrary& library, CollectorPurpose purpose,
                       clsCallBackProgreso* progress) {
  const std::string path = ChooseTransportFile("Articulos", context.UserDialogs(), context.services.SystemClock());
  if (path.empty()) return;
  const ActionReport report = WriteCollectorFile(context, library, purpose, progress, path);
  if (!report.done && !report.told) ShowFailure(context, report.text);
}

}  // namespace tolvan
