#include "desktop/DateAndTimeFields.h"

#include <wx/calctrl.h>
#include <wx/sizer.h>
#include <wx/spinbutt.h>
#include <wx/textctrl.h>

#include "desktop/Controls.h"
#include "ui/DailySalesFields.h"

namespace tolvan {
namespace {

class CalendarPopup : public wxComboPopup {
 public:
  explicit CalendarPopup(DateField& field) : field_(field) {}

  bool Create(wxWindow* parent) override {
    calendar_ = new wxCalendarCtrl(parent, wxID_ANY, wxDefaultDateTime, wxDefaultPosition, wxDefaultSize,
                                   wxCAL_MONDAY_FIRST | wxCAL_SHOW_HOLIDAYS);
    calendar_->Bind(wxEVT_CHAR_HOOK, &DateField::OnCalendarKey, &field_);
    calendar_->Bind(wxEVT_CALENDAR_SEL_CHANGED, [this](wxCalendarEvent&) { Take(); });
    calendar_->Bind(wxEVT_CALENDAR_DOUBLECLICKED, [this](wxCalendarEvent&) {
      Take();
      Dismiss();
    });
    return true;
  }
  wxWindow* GetControl() override { return calendar_; }
  /// The field's text when the calendar closes.
  wxString GetStringValue() const override { return field_.GetTextCtrl()->GetValue(); }
  void OnPopup() override {
    const Date date = field_.Value();
    calendar_->SetDate(wxDateTime(static_cast<wxDateTime::wxDateTime_t>(date.Day()),
                                  static_cast<wxDateTime::Month>(date.Month() - 1), date.Year()));
  }
  wxSize GetAdjustedSize(int, int, int) override { return calendar_->GetBestSize(); }

 private:
  void Take() {
    const wxDateTime chosen = calendar_->GetDate();
    field_.SetDate(Date::FromParts(chosen.GetYear(), chosen.GetMonth() + 1, chosen.GetDay()));
  }

  DateField& field_;
  wxCalendarCtrl* calendar_ = nullptr;
};

/// How far a key leads in the open calendar, where a line is a week; 0 for others.
int DaysOf(int key) {
  switch (key) {
    case WXK_LEFT:
      return -1;
    case WXK_RIGHT:
      return 1;
    case WXK_UP:
      return -7;
    case WXK_DOWN:
      return 7;
    default:
      return 0;
  }
}

}  // namespace

DateField::DateField(wxWindow* parent) : wxComboCtrl(parent, wxID_ANY) {
  SetPopupControl(new CalendarPopup(*this));
  GetTextCtrl()->SetMaxLength(10);
  FitHeight(*GetTextCtrl());
  const int buttonWidth = WidthScaledToText(*this, 60);
  SetMinSize(wxSize(GetTextExtent("00/00/0000").x + buttonWidth, -1));
  SetToolTip(wxString::FromUTF8("día/mes/año"));
  GetTextCtrl()->Bind(wxEVT_KEY_DOWN, &DateField::OnKey, this);
  // Also while the calendar is open: its keys come by way of this window.
  Bind(wxEVT_CHAR_HOOK, &DateField::OnCalendarKey, this);
  Bind(wxEVT_COMBOBOX_DROPDOWN, [this](wxCommandEvent& event) {
    typedBefore_ = GetTextCtrl()->GetValue();
    event.Skip();
  });
}

Date DateField::Value() const {
  return ParseDateText(FromWx(GetTextCtrl()->GetValue())).value_or(date_);
}

void DateField::SetDate(Date date) {
  date_ = date;
  wxComboCtrl::SetText(ToWx(DateText(date)));
}

void DateField::OnKey(wxKeyEvent& event) {
  const int key = event.GetKeyCode();
  if (event.HasAnyModifiers() || (key != WXK_UP && key != WXK_DOWN)) {
    event.Skip();
    return;
  }
  SetDate(Value().PlusDays(key == WXK_UP ? 1 : -1));
}

void DateField::OnCalendarKey(wxKeyEvent& event) {
  const int key = event.GetKeyCode();
  if (!IsPopupShown() || event.HasAnyModifiers()) return event.Skip();
  if (key == WXK_ESCAPE || key == WXK_RETURN || key == WXK_NUMPAD_ENTER) {
    if (key == WXK_ESCAPE) wxComboCtrl::SetText(typedBefore_);
    Dismiss();
  } else if (const int days = DaysOf(key); days != 0) {
    SetDate(Value().PlusDays(days));
    GetPopupControl()->OnPopup();
  } else {
    event.Skip();
  }
}

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
  spin->SetValue(0);         // and there it stays: the buttons only give a direction
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
