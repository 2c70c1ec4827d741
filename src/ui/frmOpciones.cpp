#include "ui/frmOpciones.h"

#include <utility>

#include "base/Text.h"
#include "export/DailySalesExport.h"
#include "services/ResourceTexts.h"

namespace tolvan {
namespace {

bool IsOrAll(int actionNumber, int number) {
  return actionNumber == action::none || actionNumber == number;
}

}  // namespace

frmOpciones::frmOpciones(const ComponentContext& context, OptionsView& view, ActionTools tools,
                         std::span<const Action> actions)
    : context_(&context),
      view_(&view),
      tools_(std::move(tools)),
      actions_(actions),
      progress_(&view.Pump()),
      fields_(context, view) {}

void frmOpciones::Iniciar() {
  progress_.EstablecerControles(&view_->pbProgreso(), &view_->pb01(), &view_->lbProgreso(), nullptr, nullptr);
  RestoreLayout(context_->services, view_->StoredLayout());
  view_->ShowNodes(NodesOf(actions_));
  view_->ShowPanel(action::none);
  view_->SetText(control::explicacion, LoadText(context_->application, text_id::introduction) + std::string(lineBreak) +
                                           std::string(lineBreak) +
                                           std::string(ResourceText(text_id::introductionHint)));
  currentAction_ = action::none;
  Perform([this] { Cargar(); });
  ShowFiles();
}

void frmOpciones::LlenarCodigo() {
  view_->SetText(control::codigoTienda, context_->settings.Text(Setting::CodigoTienda));
}

void frmOpciones::bGuardar_Click() {
  if (busy_) return;
  // Whatever the action, this panel is saved with it.
  if (const auto objection = fields_.FirstObjection()) {
    SelectAction(action::dailySalesFile);
    view_->SelectNode(NodeKeyOf(action::dailySalesFile));
    return fields_.Refuse(*objection);
  }
  Work([this] {
    if (!SavePanels()) return;
    ImpExp(true);
    if (const auto offer = std::exchange(afterwards_, {})) offer();
  });
}

bool frmOpciones::SavePanels() {
  const std::string failure = ChangeSettings(
      context_->settings, [this](ImpExpSettings& settings) { StoreFields(ReadFields(*view_, folder_), settings); });
  if (failure.empty()) return true;
  context_->UserDialogs().ShowMessage(MessageIcon::Exclamation, ResourceText(text_id::windowCaption), failure);
  return false;
}

bool frmOpciones::local_LlenarForm(int actionNumber) {
  if (IsOrAll(actionNumber, action::dailySalesFile)) {
    const DailySalesFields fields = LoadFields(*context_);
    folder_ = fields.folder;
    ShowFields(fields, context_->Files(), *view_);
  }
  for (const Action& each : actions_) {
    if (each.findsFileAgain && IsOrAll(actionNumber, each.number)) FindFileAgain(each);
  }
  return true;
}

/// The file of an import that was not finished, when it is still there.
void frmOpciones::FindFileAgain(const Action& action) {
  const std::string path = context_->settings.Text(Setting::RutaUltimoArchivo);
  if (!path.empty() && context_->Files().FileExists(path)) files_[action.number] = path;
}

void frmOpciones::local_FocoPrimerCampo(int actionNumber) {
  if (actionNumber == action::dailySalesFile) view_->Focus(control::codigoTienda);
}

void frmOpciones::Cargar() {
  local_LlenarForm(action::none);
}

void frmOpciones::ImpExp(bool interactive) {
  if (currentAction_ == action::none) {
    if (interactive) {
      context_->UserDialogs().ShowMessage(MessageIcon::Exclamation, ResourceText(text_id::windowCaption),
                                          ResourceText(text_id::chooseCategory));
    }
    return;
  }
  const Action& action = FindAction(currentAction_, actions_);
  std::string& file = files_[action.number];
  if (action.check != nullptr && file.empty()) ChooseFile(action);
  ActionRun run{.action = action,
                .context = *context_,
                .tools = tools_,
                .progress = progress_,
                .window = *view_,
                .file = file,
                .interactive = interactive};
  static_cast<void>(RunAction(run));
  afterwards_ = std::move(run.afterwards);
}

bool frmOpciones::Exp_Micros_01(bool interactive, std::string& errorText) {
  const ActionReport report = DailySalesExport(*context_).Run(interactive);
  errorText += report.text;
  return report.done;
}

void frmOpciones::tvOpciones_NodeClick(const std::string& key) {
  if (busy_) return;
  Perform([&] { SelectAction(NumberInKey(key)); });
}

void frmOpciones::SelectAction(int number) {
  const Action& action = FindAction(number, actions_);
  const bool hasPanel = action.panel != PanelKind::None;
  view_->ShowPanel(hasPanel ? number : action::none);
  if (hasPanel) view_->SetText(control::tituloCategoria, ResourceText(action.captionId));
  view_->AllowAccept(static_cast<bool>(action.routine));
  currentAction_ = number;
}

void frmOpciones::bCancelar_Click() {
  if (busy_) {
    view_->RequestStop();
  } else {
    view_->CloseWindow();
  }
}

bool frmOpciones::QueryUnload() {
  if (!busy_) return true;
  closesAfterWork_ = true;
  view_->RequestStop();
  return false;
}

void frmOpciones::Unload() {
  SaveLayout(context_->services, view_->StoredLayout());
}

void frmOpciones::bC1_AbrirCarpeta_Click() {
  if (!busy_) Perform([this] { ChooseFolder(); });
}

void frmOpciones::ChooseFolder() {
  FileHelper& files = context_->Files();
  const auto chosen =
      context_->UserDialogs().PickFolder(ResourceText(text_id::folderPickerTitle), files.NormalizeFolder(folder_));
  if (!chosen || chosen->empty()) return;
  folder_ = *chosen;
  view_->SetText(control::carpetaDestino, files.FormatForDisplay(folder_));
}

void frmOpciones::BAbrirArchivo_Click() {
  if (busy_ || currentAction_ == action::none) return;
  const Action& action = FindAction(currentAction_, actions_);
  if (action.check != nullptr) Perform([&] { ChooseFile(action); });
  ShowFiles();
}

void frmOpciones::ChooseFile(const Action& action) {
  const auto chosen = context_->UserDialogs().PickFileToOpen(action.check->pickerTitle, action.check->pickerFilter);
  if (chosen && !chosen->empty()) files_[action.number] = *chosen;
}

void frmOpciones::cmdAbrirPlantilla_Click() {
  Work([this] { OpenTemplate(*context_, tools_.imports.spreadsheets); });
}

void frmOpciones::cmdDCExportarItems_Click() {
  Work([this] { MakeCollectorFile(*context_, tools_.xml, purpose_, &progress_); });
}

/// What a step throws is shown to the user; nothing leaves a public operation.
void frmOpciones::Perform(const std::function<void()>& step) const {
  std::string failure;
  try {
    return step();
  } catch (const HostError& error) {
    failure = TextForPeople(error);
  } catch (const std::exception& error) {
    failure = std::string("Error inesperado: ") + error.what();
  }
  ShowFailure(*context_, std::string(lineBreak) + failure);
}

/// A piece of work that may take long. Events that arrive meanwhile begin no second one.
void frmOpciones::Work(const std::function<void()>& work) {
  if (busy_) return;
  busy_ = true;
  view_->SetBusy(true);
  Perform(work);
  progress_.ApagarProgreso();
  view_->SetBusy(false);
  busy_ = false;
  ShowFiles();
  if (closesAfterWork_) view_->CloseWindow();
}

void frmOpciones::ShowFiles() {
  for (const Action& each : actions_) {
    if (each.check == nullptr) continue;
    const std::string& path = files_[each.number];
    view_->SetFile(each.number,
                   path.empty() ? std::string(panel_text::nothingSelected) : context_->Files().FormatForDisplay(path));
  }
}

}  // namespace tolvan
