// A date typed as 31/01/2024, moved by the arrow keys, or chosen from a calendar. The toolkit's own field writes dates
// as the system's language does, which on a plain installation is month before day.
#pragma once

#include <wx/combo.h>

#include "base/Calendar.h"

namespace tolvan {

class DateField : public wxComboCtrl {
 public:
  explicit DateField(wxWindow* parent);

  /// The last date that was one.
  Date Value() const;
  void SetDate(Date date);

 private:
  void OnKey(wxKeyEvent& event);
  void Normalise();

  Date date_;
};

}  // namespace tolvan
