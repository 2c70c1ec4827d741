// A time of day typed as 19:00; the arrow keys and the buttons beside it move the hour or the minute, wherever the
// caret stands.
#pragma once

#include <wx/panel.h>

#include "ui/OpcionesView.h"

class wxTextCtrl;

namespace tolvan {

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
