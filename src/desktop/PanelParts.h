// The few kinds of rows that the panels are made of, with the same distances everywhere.
#pragma once

#include <wx/panel.h>

#include <string_view>

class wxButton;
class wxSizer;
class wxStaticText;
class wxTextCtrl;

namespace tolvan {

class WrappedText;

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

}  // namespace tolvan
