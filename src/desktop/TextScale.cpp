#include "desktop/TextScale.h"

#include <gtk/gtk.h>
#include <wx/display.h>
#include <wx/sizer.h>
#include <wx/textctrl.h>
#include <wx/toplevel.h>

namespace tolvan {
namespace {

// A character of the usual font, in pixels.
constexpr int usualWidth = 8;
constexpr int usualHeight = 17;

// What a window manager puts around a window, as far as can be known before it does.
constexpr int frameWidth = 8;
constexpr int frameHeight = 40;

int Scaled(int length, int character, int usual) {
  return length < 0 ? length : length * wxMax(character, usual) / usual;
}

}  // namespace

wxSize ScaledToText(const wxWindow& window, wxSize size) {
  const wxSize pixels = window.FromDIP(size);
  return {WidthScaledToText(window, size.x), Scaled(pixels.y, window.GetCharHeight(), usualHeight)};
}

int WidthScaledToText(const wxWindow& window, int width) {
  return Scaled(window.FromDIP(width), window.GetCharWidth(), usualWidth);
}

void FitHeight(wxTextCtrl& field) {
  gint natural = 0;
  gtk_widget_get_preferred_height(field.GetHandle(), nullptr, &natural);
  field.SetMinSize(wxSize(field.GetMinWidth(), natural));
}

void FitToScreen(wxTopLevelWindow& window, std::initializer_list<Yielding> yielding) {
  const wxSize room = wxDisplay(&window).GetClientArea().GetSize() - window.FromDIP(wxSize(frameWidth, frameHeight));
  wxSize size = window.GetSizer()->ComputeFittingClientSize(&window);
  size.DecTo(room);
  for (const Yielding& each : yielding) each.window->SetMinSize(each.smallest);
  wxSize smallest = window.GetSizer()->ComputeFittingClientSize(&window);
  smallest.DecTo(room);
  window.SetMinClientSize(smallest);
  window.SetClientSize(size);
}

}  // namespace tolvan
