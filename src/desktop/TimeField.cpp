#include "desktop/TimeField.h"

#include <wx/sizer.h>
#include <wx/spinbutt.h>
#include <wx/textctrl.h>

#include "desktop/TextScale.h"
#include "desktop/WxText.h"
#include "ui/FieldTexts.h"

namespace tolvan {

TimeField::TimeField(wxWindow* parent) : wxPanel(parent), text_(new wxTextCtrl(this, wxID_ANY)) {
  text_->SetMaxLength(5);
  text_->SetMinSize(wxSize(text_->GetSizeFromTextSize(text_->GetTextExtent("00:00_")).x, -1));
  FitHeight(*text_);
  text_->SetToolTip("hora:minutos");
  text_->Bind(wxEVT_KEY_DOWN, [this](wxKeyEvent& event) {
    const int key = event.GetKeyCode();
    if (event.HasAnyModifiers() || (key != WXK_UP && key != WXK_DOWN)) {
      event.Skip();
    } else {
      Move(key == WXK_UP ? 1 : -1);
    }
  });
  auto* const spin = new wxSpinButton(this, wxID_ANY);
  spin->SetRange(-1000, 1000);
  spin->SetValue(0);         // and there it stays: the buttons only tell a direction
  spin->SetCanFocus(false);  // the arrow keys do the same
  spin->Bind(wxEVT_SPIN_UP, [this](wxSpinEvent& event) {
    Move(1);
    event.Veto();
  });
  spin->Bind(wxEVT_SPIN_DOWN, [this](wxSpinEvent& event) {
    Move(-1);
    event.Veto();
  });
  auto* const row = new wxBoxSizer(wxHORIZONTAL);
  row->Add(text_, wxSizerFlags().CentreVertical());
  row->Add(spin, wxSizerFlags().Expand());
  SetSizer(row);
}

TimeOfDay TimeField::Value() const {
  return ParseTimeText(FromWx(text_->GetValue())).value_or(time_);
}

void TimeField::SetValue(TimeOfDay time) {
  time_ = time;
  text_->ChangeValue(ToWx(TimeText(time)));
}

void TimeField::Move(int direction) {
  constexpr long minutesBegin = 3;
  const long caret = text_->GetInsertionPoint();
  SetValue(Moved(Value(), direction * (caret >= minutesBegin ? 1 : 60)));
  text_->SetInsertionPoint(caret);
}

}  // namespace tolvan
