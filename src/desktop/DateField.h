// A date typed as 31/01/2024, moved by the arrow keys, or chosen from a calendar. The toolkit's own field writes dates
// as the system's language does, which on a plain installation is month before day.
#pragma once

#include <wx/combo.h>

#include "base/Calendar.h"

namespace tolvan {

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

}  // namespace tolvan
