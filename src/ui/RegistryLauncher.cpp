#include "ui/RegistryLauncher.h"

#include <utility>

#include "base/Text.h"
#include "fiscal/TaxpayerRegistryImport.h"

namespace tolvan {
namespace {

constexpr std::string_view title = "Líneas rechazadas";
constexpr std::string_view question =
    "Algunas líneas del archivo no se registraron. ¿Desea guardarlas en un archivo, con el número de cada línea y la "
    "causa?";

}  // namespace

void RegistryLauncher::AttachTo(frmOpciones& form) {
  form.SetRoutine(action::taxpayerRegistry, [this](bool, std::string& errorText, bool& silent) {
    silent = true;  // the import shows its counts itself
    return Launch(errorText);
  });
}

void RegistryLauncher::ChooseFile() {
  const auto chosen =
      context_->UserDialogs().PickFileToOpen("Seleccionar Archivo de Texto RNC", "Archivo de Texto RNC|*.txt");
  if (chosen && !chosen->empty()) file_ = *chosen;
}

bool RegistryLauncher::Launch(std::string& errorText) {
  if (file_.empty()) ChooseFile();
  rejected_ = {};
  std::string message;
  const bool finished = Import(message);
  if (!finished) errorText.append(lineBreak).append(message);
  return finished;
}

bool RegistryLauncher::Import(std::string& message) {
  if (file_.empty()) {
    message = "Debe seleccionar primero el archivo de texto";
    return false;
  }
  try {
    HostApplication& application = context_->application;
    TaxpayerRegistryImport import(
        {application.Database(), application.Dialect(), context_->Files(), context_->services.Archives(),
         context_->UserDialogs(), context_->services.UserInterruption(), *progress_},
        &rejected_);
    import.SetRutaArchivo(file_);
    const bool finished = import.ImportarArchivoRNC(message);
    if (import.End() == RegistryImportEnd::NotRun) rejected_ = {};
    return finished;
  } catch (const HostError& error) {  // the database cannot be opened
    message = TextForPeople(error);
    return false;
  }
}

void RegistryLauncher::OfferRejections() {
  const RejectionList rejected = std::exchange(rejected_, {});
  if (!rejected.IsEmpty() && context_->UserDialogs().AskYesNo(title, question, true)) SaveRejections(rejected);
}

void RegistryLauncher::SaveRejections(const RejectionList& rejected) const {
  Dialogs& dialogs = context_->UserDialogs();
  for (;;) {
    const auto path = dialogs.PickFileToSave("Guardar líneas rechazadas", "Archivo de Texto|*.txt", "Rechazos RNC.txt");
    if (!path || path->empty()) return;
    try {
      if (context_->Files().IsSameFile(*path, file_)) {
        dialogs.ShowMessage(MessageIcon::Exclamation, title, "Elija otro archivo: ese es el que se importó.");
        continue;
      }
      rejected.SaveTo(context_->Files(), *path);
      return dialogs.ShowMessage(
          MessageIcon::Information, title,
          "Las líneas rechazadas se guardaron en:\r\n" + context_->Files().FormatForDisplay(*path));
    } catch (const HostError& error) {
      dialogs.ShowMessage(MessageIcon::Exclamation, title, TextForPeople(error));
    }
  }
}

}  // namespace tolvan
