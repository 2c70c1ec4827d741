// Sizes that hold a text grow with the font in which people read it: the desktop's own font and its text scale.
// Distances between controls do not.
#pragma once

#include <wx/gdicmn.h>

#include <initializer_list>

class wxTextCtrl;
class wxTopLevelWindow;
class wxWindow;

namespace tolvan {

/// A size in pixels as it is chosen for the usual font (Sans 10 on a plain screen), for the font of `window`. -1 stays.
wxSize ScaledToText(const wxWindow& window, wxSize size);
int WidthScaledToText(const wxWindow& window, int width);

/// Gives a field of one line the height that its text needs; at large text scales the toolkit asks for less.
void FitHeight(wxTextCtrl& field);

/// What gives way where a window has not the room that it asks for.
struct Yielding {
  wxWindow* window = nullptr;  ///< a list, or what scrolls
  wxSize smallest;
};

/// Gives a window with a sizer the size that this asks for, as far as the screen goes, and bounds how small it can be
/// made.
void FitToScreen(wxTopLevelWindow& window, std::initializer_list<Yielding> yielding);

}  // namespace tolvan
