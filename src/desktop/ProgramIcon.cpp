#include "desktop/ProgramIcon.h"

#include <gtk/gtk.h>
#include <wx/bmpbndl.h>

#include <string>
#include <string_view>

namespace tolvan {
namespace data {
extern const std::string_view programIcon;
}

void UseProgramIcon() {
  GList* icons = nullptr;
  for (const int side : {16, 24, 32, 48, 64, 128}) {
    const wxSize size(side, side);
    const wxBitmap drawn = wxBitmapBundle::FromSVG(std::string(data::programIcon).c_str(), size).GetBitmap(size);
    if (drawn.IsOk()) icons = g_list_append(icons, gdk_pixbuf_copy(drawn.GetPixbuf()));
  }
  gtk_window_set_default_icon_list(icons);
  g_list_free_full(icons, g_object_unref);
}

}  // namespace tolvan
