#include "desktop/Controls.h"

#include <gtk/gtk.h>
#include <wx/control.h>
#include <wx/display.h>
#include <wx/sizer.h>
#include <wx/textctrl.h>
#include <wx/toplevel.h>

#include "base/Text.h"

namespace tolvan {
namespace {

// A character of the usual font, in pixels.
constexpr int usualWidth = 8;
constexpr int usualHeight = 17;

int Scaled(int length, int character, int usual) {
  return length < 0 ? length : length * wxMax(character, usual) / usual;
}

}  // namespace

void NameControl(wxWindow& window, std::string_view name, std::string_view label) {
  window.SetName(ToWx(name));
  AtkObject* accessible = gtk_widget_get_accessible(window.GetHandle());
  if (accessible == nullptr) return;
  atk_object_set_accessible_id(accessible, std::string(name).c_str());
  if (!label.empty()) {
    wxString plain = wxControl::RemoveMnemonics(ToWx(label));
    if (plain.EndsWith(":")) plain.RemoveLast();
    atk_object_set_name(accessible, plain.utf8_str());
  }
}

wxString ToWx(std::string_view text) {
  wxString shown = wxString::FromUTF8(text.data(), text.size());
  if (!shown.empty() || text.empty()) return shown;
  // A path may hold bytes that are no UTF-8: better shown by another code page than not at all.
  const std::string readable = FromWindows1252(text);
  return wxString::FromUTF8(readable.data(), readable.size());
}

wxString ToWxMessage(std::string_view text) {
  wxString shown = ToWx(text);
  shown.Replace("\r\n", "\n");
  return shown.Trim(true).Trim(false);
}

std::string FromWx(const wxString& text) {
  const wxScopedCharBuffer bytes = text.utf8_str();
  return {bytes.data(), bytes.length()};
}

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

wxSize EstimatedFrame(const wxWindow& window) {
  return window.FromDIP(wxSize(8, 40));
}

void FitToScreen(wxTopLevelWindow& window, std::initializer_list<Yielding> yielding) {
  const wxSize room = wxDisplay(&window).GetClientArea().GetSize() - EstimatedFrame(window);
  wxSize size = window.GetSizer()->ComputeFittingClientSize(&window);
  size.DecTo(room);
  for (const Yielding& each : yielding) each.window->SetMinSize(each.smallest);
  wxSize smallest = window.GetSizer()->ComputeFittingClientSize(&window);
  smallest.DecTo(room);
  window.SetMinClientSize(smallest);
  window.SetClientSize(size);
}

}  // namespace tolvan
