#include "ui/ImportLauncher.h"

#include "base/Text.h"
#include "import/TemplateExport.h"
#include "import/clsIE_PreciosExcel.h"
#include "import/clsIE_PreciosMovilnet.h"
#include "services/ComponentContext.h"
#include "services/ResourceTexts.h"

namespace tolvan {
namespace {

constexpr std::string_view pickerTitle = "Seleccionar Archivo de Excel";
constexpr std::string_view pickerFilter = "Libro de Excel|*.xls;*.xlsx";
constexpr std::string_view nothingChosen = "Debe seleccionar primero el archivo de Excel";
constexpr std::string_view templateMissing =
    "No se encuentra el archivo de plantilla. Favor actualice Tolvan para reponer el archivo de plantilla";

}  // namespace

ImportLauncher::ImportLauncher(const ComponentContext& context, ImportTools tools, StatusWindow& window,
                               Observer observer)
    : context_(&context), tools_(std::move(tools)), window_(&window), observer_(std::move(observer)) {}

void ImportLauncher::AttachTo(frmOpciones& form) {
  for (const int number : {action::movilnetPrices, action::excelPrices}) {
    form.SetRoutine(number, [this, number](bool, std::string& errorText, bool& silent) {
      return Launch(number, errorText, silent);
    });
  }
}

bool ImportLauncher::Launch(int action, std::string& errorText, bool& silent) {
  outcome_ = {};
  const bool reviewed = Import(action);
  silent = reviewed || outcome_.shown;
  if (!silent) errorText.append(lineBreak).append(FailureText(outcome_));
  return reviewed;
}

bool ImportLauncher::Import(int action) {
  if (Workbook(action).empty()) ChooseWorkbook(action);
  const std::string path = Workbook(action);
  if (path.empty()) {
    outcome_.failure = nothingChosen;
    return false;
  }
  if (!context_->Files().FileExists(path)) {
    return Refuse("El archivo " + path + " no existe, favor seleccione la ubicación correcta del archivo");
  }
  if (remembers_) Remember(path);
  const std::unique_ptr<PriceImporter> importer = MakeImporter(action);
  if (observer_) observer_(*importer);
  importer->SetRutaArchivo(path);
  const bool reviewed = importer->Procesar(*window_);
  outcome_ = importer->Outcome();
  return reviewed;
}

bool ImportLauncher::Refuse(const std::string& text) {
  outcome_.failure = text;
  outcome_.shown = true;
  Warn(text);
  return false;
}

std::unique_ptr<PriceImporter> ImportLauncher::MakeImporter(int action) const {
  if (action == action::movilnetPrices) return std::make_unique<clsIE_PreciosMovilnet>(*context_, tools_);
  return std::make_unique<clsIE_PreciosExcel>(*context_, tools_);
}

void ImportLauncher::Remember(const std::string& path) {
  try {
    context_->settings.SetText(Setting::RutaUltimoArchivo, path);
    context_->settings.Save();
  } catch (const ApplicationError& error) {
    Warn(error.what());
  } catch (const HostError& error) {
    // Not to find the file preselected next time is no cause to refuse the import.
    Warn(std::string(ResourceText(text_id::cannotSaveSettings)) + std::string(lineBreak) + TextForPeople(error));
  }
}

void ImportLauncher::Warn(std::string_view text) const {
  context_->UserDialogs().ShowMessage(MessageIcon::Exclamation, context_->application.ProductName(), text);
}

void ImportLauncher::ChooseWorkbook(int action) {
  const auto chosen = context_->UserDialogs().PickFileToOpen(pickerTitle, pickerFilter);
  if (chosen && !chosen->empty()) workbooks_[action] = *chosen;
}

void ImportLauncher::RestoreLastWorkbook() {
  const std::string path = context_->settings.Text(Setting::RutaUltimoArchivo);
  if (!path.empty() && context_->Files().FileExists(path)) workbooks_[action::movilnetPrices] = path;
}

bool ImportLauncher::cmdAbrirPlantilla_Click() {
  const std::string path = TemplateExport::TemplatePath(context_->services);
  if (!context_->Files().FileExists(path)) {
    Warn(templateMissing);
    return false;
  }
  std::string errorText;
  const bool opened = TemplateExport(*context_, tools_.spreadsheets).AbrirPlantilla(path, errorText);
  if (!opened) Warn(std::string_view(errorText).substr(lineBreak.size()));
  return opened;
}

}  // namespace tolvan
