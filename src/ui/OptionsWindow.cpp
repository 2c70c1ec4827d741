#include "ui/OptionsWindow.h"

#include "base/Text.h"
#include "services/ResourceTexts.h"
#include "ui/PanelTexts.h"

namespace tolvan {
namespace {}  // namespace

OptionsWindow::OptionsWindow(const ComponentContext& context, OptionsWindowView& view, OptionsTools tools)
    : context_(&context),
      view_(&view),
      actions_(ComponentActions()),
      progress_(&view.Pump()),
      form_(context, view),
      fields_(context, view),
      imports_(context, std::move(tools.imports), view),
      registry_(context, progress_),
      collector_(context, tools.xml, &progress_) {
  imports_.AttachTo(form_);
  registry_.AttachTo(form_);
}

void OptionsWindow::Iniciar() {
  progress_.EstablecerControles(&view_->pbProgreso(), &view_->pb01(), &view_->lbProgreso(), nullptr, nullptr);
  RestoreLayout(context_->services, *view_);
  view_->ShowNodes(actions_.Nodes());
  view_->ShowPanel(0);
  view_->SetText(control::explicacion, LoadText(context_->application, text_id::introduction) + std::string(lineBreak) +
                                           std::string(lineBreak) +
                                           std::string(ResourceText(text_id::introductionHint)));
  form_.SelectAction(action::none);
  Perform([this] {
    form_.Cargar();
    imports_.RestoreLastWorkbook();
  });
  ShowFiles();
}

void OptionsWindow::tvOpciones_NodeClick(const std::string& key) {
  if (busy_) return;
  Perform([&] { ShowAction(ActionTable::NumberOf(key)); });
}

void OptionsWindow::ShowAction(int number) {
  const ActionSlot& slot = actions_.At(number);
  view_->ShowPanel(slot.panel < 0 ? 0 : slot.panel);
  if (slot.panel >= 0) view_->SetText(control::tituloCategoria, ResourceText(slot.captionId));
  view_->AllowAccept(number != action::collectorFile);
  form_.SelectAction(number);
}

void OptionsWindow::bGuardar_Click() {
  if (busy_) return;
  // Whatever the action, this panel is saved with it.
  if (const auto objection = fields_.FirstObjection()) {
    ShowAction(action::dailySalesFile);
    view_->SelectNode(ActionTable::KeyOf(action::dailySalesFile));
    return fields_.Refuse(*objection);
  }
  Work([this] {
    form_.bGuardar_Click();
    registry_.OfferRejections();
  });
}

void OptionsWindow::bCancelar_Click() {
  if (busy_) {
    view_->RequestStop();
  } else {
    view_->CloseWindow();
  }
}

bool OptionsWindow::QueryUnload() {
  if (!busy_) return true;
  closesAfterWork_ = true;
  view_->RequestStop();
  return false;
}

void OptionsWindow::Unload() {
  SaveLayout(context_->services, *view_);
}

void OptionsWindow::bC1_AbrirCarpeta_Click() {
  if (!busy_) Perform([this] { form_.ChooseFolder(); });
}

void OptionsWindow::BAbrirArchivo_Click(int element) {
  if (busy_) return;
  Perform([&] {
    if (element == 1) {
      registry_.ChooseFile();
    } else {
      imports_.ChooseWorkbook(form_.CurrentAction());
    }
  });
  ShowFiles();
}

void OptionsWindow::cmdAbrirPlantilla_Click() {
  Work([this] { imports_.cmdAbrirPlantilla_Click(); });
}

void OptionsWindow::cmdDCExportarItems_Click() {
  Work([this] { collector_.cmdDCExportarItems_Click(); });
}

/// What a step throws is told to the user; nothing leaves a public operation.
void OptionsWindow::Perform(const std::function<void()>& step) const {
  std::string failure;
  try {
    return step();
  } catch (const HostError& error) {
    failure = TextForPeople(error);
  } catch (const std::exception& error) {
    failure = std::string("Error inesperado: ") + error.what();
  }
  context_->UserDialogs().ShowMessage(
      MessageIcon::Exclamation, form_.Caption(),
      std::string(ResourceText(text_id::errorsHappened)).append(lineBreak).append(failure));
}

/// A piece of work that may take long. Events that arrive meanwhile begin no second one.
void OptionsWindow::Work(const std::function<void()>& work) {
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

void OptionsWindow::ShowFiles() {
  const auto show = [&](int panel, const std::string& path) {
    view_->SetFile(panel,
                   path.empty() ? std::string(panel_text::nothingSelected) : context_->Files().FormatForDisplay(path));
  };
  for (const int panel : {action::movilnetPrices, action::excelPrices}) show(panel, imports_.Workbook(panel));
  show(action::taxpayerRegistry, registry_.File());
}

}  // namespace tolvan
