#include "desktop/OptionsPanels.h"

#include <wx/button.h>
#include <wx/checkbox.h>
#include <wx/panel.h>
#include <wx/radiobut.h>
#include <wx/sizer.h>
#include <wx/stattext.h>
#include <wx/textctrl.h>

#include "desktop/Controls.h"
#include "desktop/DateAndTimeFields.h"
#include "desktop/WindowParts.h"
#include "services/ResourceTexts.h"
#include "ui/frmOpciones.h"

namespace tolvan {
namespace {

/// Panel 1: the fields of the daily sales file.
class DailySalesPanel : public wxPanel {
 public:
  /// `logic` must outlive the panel.
  DailySalesPanel(wxWindow* parent, frmOpciones& logic);

 private:
  void AddFields(wxSizer& sizer);
  void AddMail(wxSizer& sizer);
  wxWindow* AddText(wxSizer& grid, std::string_view name, std::string_view label);
  void Forward(wxWindow& control, std::string_view name);
  void ValidateAfterLeaving(std::string_view name);

  frmOpciones& logic_;
  bool validating_ = false;
};

DailySalesPanel::DailySalesPanel(wxWindow* parent, frmOpciones& logic) : wxPanel(parent), logic_(logic) {
  auto* const column = new wxBoxSizer(wxVERTICAL);
  AddFields(*column);
  const PathRow folder =
      AddPathRow(*this, *column, ResourceText(text_id::folderLabel), control::carpetaDestino, control::abrirCarpeta);
  folder.button->Bind(wxEVT_BUTTON, [this](wxCommandEvent&) { logic_.bC1_AbrirCarpeta_Click(); });
  AddMail(*column);
  SetSizer(column);
}

void DailySalesPanel::AddFields(wxSizer& sizer) {
  auto* const grid = new wxFlexGridSizer(2, Gap(*this), Gap(*this));
  grid->AddGrowableCol(1);
  AddText(*grid, control::codigoTienda, ResourceText(text_id::storeCodeLabel));

  const std::string_view dateLabel = ResourceText(text_id::reportDateLabel);
  grid->Add(MakeLabel(*this, dateLabel), wxSizerFlags().CentreVertical());
  auto* const date = new DateField(this);
  NameControl(*date, control::fechaMovimiento, dateLabel);
  NameControl(*date->GetTextCtrl(), "texto_dC1_FechaMovimiento", dateLabel);
  Forward(*date->GetTextCtrl(), control::fechaMovimiento);
  grid->Add(date, wxSizerFlags().CentreVertical());

  const std::string_view timeLabel = ResourceText(text_id::endOfDayLabel);
  grid->Add(MakeLabel(*this, timeLabel), wxSizerFlags().CentreVertical());
  auto* const time = new TimeField(this);
  NameControl(*time, control::horaFinJornada, timeLabel);
  NameControl(time->Text(), "texto_dtC1_HoraFinJornada", timeLabel);
  Forward(time->Text(), control::horaFinJornada);
  grid->Add(time, wxSizerFlags().CentreVertical());

  AddText(*grid, control::nombreArchivo, ResourceText(text_id::forcedNameLabel));
  sizer.Add(grid, wxSizerFlags().Expand().Border(wxBOTTOM, 2 * Gap(*this)));
}

void DailySalesPanel::AddMail(wxSizer& sizer) {
  auto* const send = new wxCheckBox(this, wxID_ANY, ToWx(ResourceText(text_id::sendMailLabel)));
  NameControl(*send, control::enviarEmail);
  send->Bind(wxEVT_CHECKBOX, [this](wxCommandEvent&) { logic_.Fields().chk_Click(); });
  Forward(*send, control::enviarEmail);
  sizer.Add(send, wxSizerFlags().Border(wxBOTTOM, Gap(*this)));
  auto* const grid = new wxFlexGridSizer(2, Gap(*this), Gap(*this));
  grid->AddGrowableCol(1);
  AddText(*grid, control::email, ResourceText(text_id::mailAddressLabel));
  sizer.Add(grid, wxSizerFlags().Expand());
}

wxWindow* DailySalesPanel::AddText(wxSizer& grid, std::string_view name, std::string_view label) {
  grid.Add(MakeLabel(*this, label), wxSizerFlags().CentreVertical());
  auto* const text = new wxTextCtrl(this, wxID_ANY, {}, wxDefaultPosition, wxDefaultSize, wxTE_PROCESS_ENTER);
  FitHeight(*text);
  NameControl(*text, name, label);
  Forward(*text, name);
  grid.Add(text, wxSizerFlags(1).Expand().CentreVertical());
  return text;
}

/// Focus, keys and leaving of a field go to its rules, under the field's fixed name.
void DailySalesPanel::Forward(wxWindow& control, std::string_view name) {
  control.Bind(wxEVT_SET_FOCUS, [this, name](wxFocusEvent& event) {
    event.Skip();
    // The toolkit places its caret after this event.
    CallAfter([this, name] { logic_.Fields().GotFocus(name); });
  });
  control.Bind(wxEVT_KEY_DOWN, [this, name](wxKeyEvent& event) {
    std::int16_t key = event.GetKeyCode() == WXK_RETURN || event.GetKeyCode() == WXK_NUMPAD_ENTER ? 13 : 1;
    logic_.Fields().KeyPress(name, key);
    if (key != 0) event.Skip();
  });
  control.Bind(wxEVT_KILL_FOCUS, [this, name](wxFocusEvent& event) {
    event.Skip();
    // Where the focus goes is known only once it is there.
    CallAfter([this, name] { ValidateAfterLeaving(name); });
  });
}

/// Only for a move inside the panel: leaving the window, or for its buttons, asks nothing.
void DailySalesPanel::ValidateAfterLeaving(std::string_view name) {
  wxWindow* const focused = FindFocus();
  wxWindow* const left = FindWindow(ToWx(name));
  if (validating_ || logic_.IsBusy() || focused == nullptr || !IsDescendant(focused)) return;
  if (focused == left || left->IsDescendant(focused)) return;
  validating_ = true;
  if (!logic_.Fields().Validate(name)) left->SetFocus();
  validating_ = false;
}

/// Shows the file that an action reads and chooses another; beside it what the row says, and the template where the
/// action has one.
class FilePanel : public wxPanel {
 public:
  /// Both must outlive the panel.
  FilePanel(wxWindow* parent, const Action& action, frmOpciones& logic);

  void SetFile(std::string_view path);

 private:
  wxTextCtrl* file_ = nullptr;
};

/// The purpose of the collector's file, and the button that makes it.
class CollectorPanel : public wxPanel {
 public:
  /// `logic` must outlive the panel.
  CollectorPanel(wxWindow* parent, const Action& action, frmOpciones& logic);
};

FilePanel::FilePanel(wxWindow* parent, const Action& action, frmOpciones& logic) : wxPanel(parent) {
  auto* const column = new wxBoxSizer(wxVERTICAL);
  AddParagraph(*this, *column, action.help);
  if (!action.warning.empty()) AddParagraph(*this, *column, action.warning, true);
  const FileCheck& check = *action.check;
  const PathRow row =
      AddPathRow(*this, *column, check.label, control::archivo, "BAbrirArchivo" + std::to_string(check.button));
  row.button->Bind(wxEVT_BUTTON, [&logic](wxCommandEvent&) { logic.BAbrirArchivo_Click(); });
  file_ = row.path;
  if (action.opensTemplate) {
    AddParagraph(*this, *column, panel_text::templateHelp);
    wxButton* const open = MakeButton(*this, "cmdAbrirPlantilla", panel_text::openTemplate);
    open->Bind(wxEVT_BUTTON, [&logic](wxCommandEvent&) { logic.cmdAbrirPlantilla_Click(); });
    column->Add(open);
  }
  SetSizer(column);
}

void FilePanel::SetFile(std::string_view path) {
  ShowPath(*file_, path);
}

CollectorPanel::CollectorPanel(wxWindow* parent, const Action& action, frmOpciones& logic) : wxPanel(parent) {
  auto* const column = new wxBoxSizer(wxVERTICAL);
  AddParagraph(*this, *column, action.help);
  const auto add = [&](CollectorPurpose purpose, std::string_view caption, long style) {
    auto* const option = new wxRadioButton(this, wxID_ANY, ToWx(caption), wxDefaultPosition, wxDefaultSize, style);
    NameControl(*option, "opProposito" + std::to_string(static_cast<int>(purpose)));
    option->Bind(wxEVT_RADIOBUTTON, [&logic, purpose](wxCommandEvent&) { logic.opProposito_Click(purpose); });
    column->Add(option, wxSizerFlags().Border(wxBOTTOM, Gap(*this)));
    return option;
  };
  add(CollectorPurpose::Count, panel_text::purposeCount, wxRB_GROUP)->SetValue(true);
  add(CollectorPurpose::Receiving, panel_text::purposeReceiving, 0);
  wxButton* const create = MakeButton(*this, "cmdDCExportarItems", panel_text::createFile);
  create->Bind(wxEVT_BUTTON, [&logic](wxCommandEvent&) { logic.cmdDCExportarItems_Click(); });
  column->Add(create, wxSizerFlags().Border(wxTOP, Gap(*this)));
  SetSizer(column);
}

}  // namespace

PanelStack::PanelStack(wxWindow* parent, frmOpciones& logic)
    : wxScrolledWindow(parent, wxID_ANY, wxDefaultPosition, wxDefaultSize, wxTAB_TRAVERSAL | wxBORDER_NONE) {
  NameControl(*this, "paneles");
  panels_[action::none] = MakeIntroduction();
  for (const Action& each : logic.Actions()) {
    if (wxPanel* const made = MakePanel(each, logic)) panels_[each.number] = made;
  }
  auto* const column = new wxBoxSizer(wxVERTICAL);
  wxSize largest = ScaledToText(*this, wxSize(480, 300));
  for (const auto& [number, panel] : panels_) {
    NameControl(*panel, "panel" + std::to_string(number));
    column->Add(panel, wxSizerFlags(1).Expand());
    largest.IncTo(panel->GetSizer()->CalcMin());
  }
  SetSizer(column);
  const int step = GetCharHeight();
  SetScrollRate(step, step);
  // Room for the largest, so that the window does not change with the choice.
  SetMinSize(largest);
  ShowPanel(0);
}

wxPanel* PanelStack::MakeIntroduction() {
  auto* const introduction = new wxPanel(this);
  introduction->SetCanFocus(false);  // there is nothing in it to act on
  auto* const sizer = new wxBoxSizer(wxVERTICAL);
  NameControl(*AddParagraph(*introduction, *sizer, {}), control::explicacion);
  introduction->SetSizer(sizer);
  return introduction;
}

wxPanel* PanelStack::MakePanel(const Action& action, frmOpciones& logic) {
  switch (action.panel) {
    case PanelKind::DailySales:
      return new DailySalesPanel(this, logic);
    case PanelKind::File:
      return new FilePanel(this, action, logic);
    case PanelKind::Collector:
      return new CollectorPanel(this, action, logic);
    case PanelKind::None:
      break;
  }
  return nullptr;
}

void PanelStack::ShowPanel(int panel) {
  for (const auto& [number, each] : panels_) each->Show(number == panel);
  Scroll(0, 0);
  FitInside();
  Layout();
}

void PanelStack::SetFile(int panel, std::string_view text) {
  auto* const files = dynamic_cast<FilePanel*>(panels_.at(panel));
  if (files != nullptr) files->SetFile(text);
}

void PanelStack::EnablePanels(bool enabled) {
  for (const auto& [number, each] : panels_) each->Enable(enabled);
}

void PanelStack::LeaveField() {
  wxWindow* focused = FindFocus();
  while (focused != nullptr && focused->GetParent() != nullptr &&
         dynamic_cast<DailySalesPanel*>(focused->GetParent()) == nullptr) {
    focused = focused->GetParent();
  }
  if (focused != nullptr) focused->Navigate();
}

}  // namespace tolvan
