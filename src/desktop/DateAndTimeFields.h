// Fields for a date and for a time of day, typed or moved by the arrow keys. The toolkit's own fields write them as the
// system's language does, which on a plain installation is month before day.
#pragma once

#include <wx/combo.h>
#include <wx/panel.h>

#include "base/Calendar.h"

class wxTextCtrl;

namespace tolvan {

/// A date typed as 31/01/2024, or chosen from a calendar.
class DateField : public wxComboCtrl {
 public:
  explicit DateField(wxWindow* parent);

  /// The last date that was one; what was typed since may be none.
  Date Value() const;
  void SetDate(Date date);

  /// A key while the calendar may be open: arrows move in it, Escape closes it and brings back what stood here before,
  /// Enter keeps what was chosen.
  void OnCalendarKey(wxKeyEvent& event);

 private:
  void OnKey(wxKeyEvent& event);

  Date date_;
  wxString typedBefore_;
};

/// A time of day typed as 19:00; the arrow keys and the buttons beside it move the hour or the minute, wherever the
/// caret stands.
class TimeField : public wxPanel {
 public:
  explicit TimeField(wxWindow* parent);

  /// The last time that was one; what was typed since may be none.
  TimeOfDay Value() const;
  void SetValue(TimeOfDay time);

  /// Where keys arrive.
  wxTextCtrl& Text() { return *text_; }

 private:
  void Move(int direction);

  wxTextCtrl* text_;
  TimeOfDay time_;
};

}  // namespace tolvan
