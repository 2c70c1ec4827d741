#include "desktop/GtkWindows.h"

#include <functional>

namespace tolvan::test {

void ForEachGtkWindow(const std::function<void(GtkWindow*)>& take) {
  GList* const windows = gtk_window_list_toplevels();
  for (const GList* each = windows; each != nullptr; each = each->next) {
    if (gtk_widget_get_mapped(GTK_WIDGET(each->data))) take(GTK_WINDOW(each->data));
  }
  g_list_free(windows);
}

GtkMenuShell* OpenedMenu() {
  GtkWidget* const grabbing = gtk_grab_get_current();
  return GTK_IS_MENU(grabbing) ? GTK_MENU_SHELL(grabbing) : nullptr;
}

bool PickerIsShown(const std::string& title) {
  bool shown = false;
  ForEachGtkWindow([&](GtkWindow* window) {
    const char* const text = gtk_window_get_title(window);
    shown = shown || (GTK_IS_FILE_CHOOSER(window) && text != nullptr && std::string_view(text).starts_with(title));
  });
  return shown;
}

std::vector<GtkWidget*> EntriesOf(GtkMenuShell* menu) {
  std::vector<GtkWidget*> entries;
  GList* const children = gtk_container_get_children(GTK_CONTAINER(menu));
  for (const GList* each = children; each != nullptr; each = each->next) {
    if (!GTK_IS_SEPARATOR_MENU_ITEM(each->data)) entries.push_back(GTK_WIDGET(each->data));
  }
  g_list_free(children);
  return entries;
}

std::string PathInPicker() {
  std::string path;
  ForEachGtkWindow([&](GtkWindow* window) {
    GtkWidget* const focused = gtk_window_get_focus(window);
    if (GTK_IS_FILE_CHOOSER(window) && GTK_IS_ENTRY(focused)) path = gtk_entry_get_text(GTK_ENTRY(focused));
  });
  return path;
}

}  // namespace tolvan::test
