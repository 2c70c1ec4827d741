#include "desktop/ControlName.h"

#include <gtk/gtk.h>
#include <wx/control.h>

#include <string>

#include "desktop/WxText.h"

namespace tolvan {

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

}  // namespace tolvan
