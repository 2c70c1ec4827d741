#include "desktop/DateField.h"

#include <wx/calctrl.h>
#include <wx/textctrl.h>

#include "desktop/WxText.h"
#include "ui/FieldTexts.h"

namespace tolvan {
namespace {

class CalendarPopup : public wxComboPopup {
 public:
  explicit CalendarPopup(DateField& field) : field_(field) {}

  bool Create(wxWindow* parent) override {
    calendar_ = new wxCalendarCtrl(parent, wxID_ANY, wxDefaultDateTime, wxDefaultPosition, wxDefaultSize,
                                   wxCAL_MONDAY_FIRST | wxCAL_SHOW_HOLIDAYS);
    calendar_->Bind(wxEVT_CALENDAR_SEL_CHANGED, [this](wxCalendarEvent&) { Take(); });
    calendar_->Bind(wxEVT_CALENDAR_DOUBLECLICKED, [this](wxCalendarEvent&) {
      Take();
      Dismiss();
    });
    return true;
  }
  wxWindow* GetControl() override { return calendar_; }
  wxString GetStringValue() const override { return ToWx(DateText(field_.Value())); }
  void OnPopup() override {
    const Date date = field_.Value();
    calendar_->SetDate(wxDateTime(static_cast<wxDateTime::wxDateTime_t>(date.Day()),
                                  static_cast<wxDateTime::Month>(date.Month() - 1), date.Year()));
    calendar_->SetFocus();
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

}  // namespace

DateField::DateField(wxWindow* parent) : wxComboCtrl(parent, wxID_ANY) {
  SetPopupControl(new CalendarPopup(*this));
  GetTextCtrl()->SetMaxLength(10);
  const int buttonWidth = FromDIP(60);
  SetMinSize(wxSize(GetTextExtent("00/00/0000").x + buttonWidth, -1));
  SetToolTip(wxString::FromUTF8("día/mes/año"));
  GetTextCtrl()->Bind(wxEVT_KEY_DOWN, &DateField::OnKey, this);
  GetTextCtrl()->Bind(wxEVT_KILL_FOCUS, [this](wxFocusEvent& event) {
    Normalise();
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

/// What was typed in another form is shown in the usual one; what is no date gives way to the date before.
void DateField::Normalise() {
  SetDate(Value());
}

}  // namespace tolvan
