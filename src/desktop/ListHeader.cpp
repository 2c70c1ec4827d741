#include "desktop/ListHeader.h"

#include <gtk/gtk.h>
#include <wx/dataview.h>

namespace tolvan {
namespace {

GtkTreeViewColumn* HandleOf(const wxDataViewColumn& column) {
  return GTK_TREE_VIEW_COLUMN(column.GetGtkHandle());
}

struct Watch {
  std::function<void(std::int32_t)> clicked;
  std::int32_t column;
};

void OnClicked(GtkTreeViewColumn*, gpointer watch) {
  const auto& found = *static_cast<const Watch*>(watch);
  found.clicked(found.column);
}

void Forget(gpointer watch, GClosure*) {
  delete static_cast<Watch*>(watch);
}

}  // namespace

void WatchHeaders(wxDataViewCtrl& list, const std::function<void(std::int32_t)>& clicked) {
  for (unsigned number = 0; number < list.GetColumnCount(); ++number) {
    const wxDataViewColumn& column = *list.GetColumn(number);
    gtk_tree_view_column_set_clickable(HandleOf(column), TRUE);
    auto* const watch = new Watch{clicked, static_cast<std::int32_t>(column.GetModelColumn())};
    g_signal_connect_data(HandleOf(column), "clicked", G_CALLBACK(OnClicked), watch, Forget, G_CONNECT_AFTER);
  }
}

void ShowArrow(wxDataViewColumn& column, SortArrow arrow) {
  gtk_tree_view_column_set_sort_indicator(HandleOf(column), arrow != SortArrow::None);
  gtk_tree_view_column_set_sort_order(HandleOf(column),
                                      arrow == SortArrow::Descending ? GTK_SORT_DESCENDING : GTK_SORT_ASCENDING);
}

std::vector<std::int32_t> ColumnsOnScreen(const wxDataViewCtrl& list) {
  std::vector<std::int32_t> columns(list.GetColumnCount());
  for (unsigned number = 0; number < list.GetColumnCount(); ++number) {
    // The list numbers its columns as they were added, wherever they were dragged.
    const wxDataViewColumn* const column = list.GetColumn(number);
    columns.at(static_cast<std::size_t>(list.GetColumnPosition(column))) =
        static_cast<std::int32_t>(column->GetModelColumn());
  }
  return columns;
}

int WidthOf(const wxDataViewColumn& column) {
  const int given = gtk_tree_view_column_get_fixed_width(HandleOf(column));
  return given > 0 ? given : column.GetWidth();
}

}  // namespace tolvan
