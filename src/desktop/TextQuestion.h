// The input box: a prompt, a line of text, accept and cancel.
#pragma once

#include <wx/dialog.h>

class wxTextCtrl;

namespace tolvan {

class TextQuestion : public wxDialog {
 public:
  TextQuestion(wxWindow* parent, const wxString& title, const wxString& prompt, const wxString& initial);

  wxString Answer() const;

 private:
  wxTextCtrl* answer_;
};

}  // namespace tolvan
