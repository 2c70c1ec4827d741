// What is on the screen beside wxWidgets' own windows: pickers and menus of the toolkit under it. On the windows'
// thread.
#pragma once

#include <gtk/gtk.h>

#include <functional>
#include <string>
#include <vector>

namespace tolvan::test {

/// Those that are on the screen, of which wxWidgets knows only its own.
void ForEachGtkWindow(const std::function<void(GtkWindow*)>& take);

/// The menu that takes the keys now; null when there is none.
GtkMenuShell* OpenedMenu();

/// The entries of a menu in their order, without the separators.
std::vector<GtkWidget*> EntriesOf(GtkMenuShell* menu);

bool PickerIsShown(const std::string& title);

/// What stands in the field for a path of the toolkit's picker; empty when there is no such field yet.
std::string PathInPicker();

}  // namespace tolvan::test
