// The few kinds of rows and texts that windows are made of, with the same distances everywhere.
#pragma once

#include <wx/panel.h>
#include <wx/stattext.h>

#include <string_view>

class wxButton;
class wxDialog;
class wxSizer;
class wxTextCtrl;

namespace tolvan {

/// A text that is broken into lines as wide as its place, however that changes.
class WrappedText : public wxStaticText {
 public:
  /// `widest` is the width in pixels that the text asks for at first; a minimal width that it is given lets it become
  /// narrower.
  WrappedText(wxWindow* parent, std::string_view text, int widest);

  void SetWrapped(std::string_view text);

 private:
  void WrapTo(int width);

  wxString text_;
  int wrapped_ = 0;
};

/// Between a control and the next, and around groups, in pixels of `window`.
int Gap(const wxWindow& window);

/// Adds a text over the whole width that is wrapped into it.
WrappedText* AddParagraph(wxWindow& panel, wxSizer& sizer, std::string_view text, bool emphasised = false);

/// The label of a control that follows.
wxStaticText* MakeLabel(wxWindow& panel, std::string_view text);

wxButton* MakeButton(wxWindow& panel, std::string_view name, std::string_view label);

/// Adds a label, and below it a field with the chosen path, not to be typed in, and a button to choose another.
struct PathRow {
  wxTextCtrl* path;
  wxButton* button;
};
PathRow AddPathRow(wxWindow& panel, wxSizer& sizer, std::string_view label, std::string_view pathName,
                   std::string_view buttonName);

/// Shows a path in such a row; the whole of it is in the tool tip.
void ShowPath(wxTextCtrl& field, std::string_view path);

/// Adds a row with "&Aceptar", the default button, and "&Cancelar" below what the sizer holds already. They end the
/// dialog with wxID_OK and wxID_CANCEL. The result is the first.
wxButton* AddDialogButtons(wxDialog& dialog, wxSizer& content, std::string_view acceptName,
                           std::string_view cancelName);

/// The window that a new modal box stands over: the modal dialog shown last, or the main window. Null when there is
/// none yet.
wxWindow* DialogParent();

}  // namespace tolvan
