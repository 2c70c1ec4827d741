// What every control of the windows needs: its name, its texts, and sizes that fit them.
//
// A control has one name, by which tests, scripts and assistive tools find it. Texts come from the component in UTF-8
// with CR LF between lines. Sizes that hold a text grow with the font in which people read it, the desktop's own font
// and its text scale; distances between controls do not.
#pragma once

#include <wx/gdicmn.h>
#include <wx/string.h>

#include <initializer_list>
#include <string>
#include <string_view>

class wxTextCtrl;
class wxTopLevelWindow;
class wxWindow;

namespace tolvan {

/// Gives a control its fixed name. Assistive tools get it as the identifier, and `label` as what to read out; an empty
/// label leaves the toolkit's own.
void NameControl(wxWindow& window, std::string_view name, std::string_view label = {});

wxString ToWx(std::string_view text);

/// For what people read: CR LF becomes one line end, and those at both ends are dropped.
wxString ToWxMessage(std::string_view text);

std::string FromWx(const wxString& text);

/// A size in pixels as it is chosen for the usual font (Sans 10 on a plain screen), for the font of `window`. -1 stays.
wxSize ScaledToText(const wxWindow& window, wxSize size);
int WidthScaledToText(const wxWindow& window, int width);

/// Gives a field of one line the height that its text needs; at large text scales the toolkit asks for less.
void FitHeight(wxTextCtrl& field);

/// What a window manager puts around a window, a little more than most do: it is not known before the window is shown.
wxSize EstimatedFrame(const wxWindow& window);

/// What gives way where a window has not the room that it asks for.
struct Yielding {
  wxWindow* window = nullptr;  ///< a list, or what scrolls
  wxSize smallest;
};

/// Gives a window with a sizer the size that this asks for, as far as the screen goes, and bounds how small it can be
/// made.
void FitToScreen(wxTopLevelWindow& window, std::initializer_list<Yielding> yielding);

}  // namespace tolvan
