#include "desktop/DailySalesPanel.h"

#include <wx/button.h>
#include <wx/checkbox.h>
#include <wx/sizer.h>
#include <wx/stattext.h>
#include <wx/textctrl.h>

#include "desktop/ControlName.h"
#include "desktop/DateField.h"
#include "desktop/PanelParts.h"
#include "desktop/TextScale.h"
#include "desktop/TimeField.h"
#include "desktop/WxText.h"
#include "services/ResourceTexts.h"
#include "ui/OptionsWindow.h"

namespace tolvan {

DailySalesPanel::DailySalesPanel(wxWindow* parent, OptionsWindow& logic) : wxPanel(parent), logic_(logic) {
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

}  // namespace tolvan
