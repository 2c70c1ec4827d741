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
    const ActionReport report = Launch();
    errorText += report.text;
    return report.done;
  });
}

void RegistryLauncher::ChooseFile() {
  const auto chosen = context_->UserDialogs().PickFileToOpen(registryPickerTitle, registryPickerFilter);
  if (chosen && !chosen->empty()) file_ = *chosen;
}

ActionReport RegistryLauncher::Launch() {
  if (file_.empty()) ChooseFile();
  rejected_ = {};
  if (file_.empty()) return {.text = std::string(lineBreak).append(registryNotChosen)};
  try {
    TaxpayerRegistryImport import(RegistryHostOf(*context_, context_->UserDialogs(), *progress_), &rejected_);
    import.SetRutaArchivo(file_);
    ActionReport report = import.Import();
    if (report.DetailsAs<RegistryImportResult>().end == RegistryImportEnd::NotRun) rejected_ = {};
    return report;
  } catch (const HostError& error) {  // the database cannot be opened
    return {.text = std::string(lineBreak) + TextForPeople(error)};
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
