// A message box whose text can be selected and copied: with the mouse, or whole with Ctrl-C.
#pragma once

#include <wx/dialog.h>

#include "host/UserInterface.h"

namespace tolvan {

class MessageWindow : public wxDialog {
 public:
  enum class Buttons { Accept, YesNo };

  MessageWindow(wxWindow* parent, MessageIcon icon, const wxString& title, const wxString& text, Buttons buttons,
                bool defaultYes = true);

 private:
  wxWindow* MakeText(const wxString& text);
  wxSizer* MakeButtons(Buttons buttons, bool defaultYes);
  void CopyText() const;

  wxString text_;
};

}  // namespace tolvan
