#include "desktop/ListColumns.h"

#include <gtk/gtk.h>

namespace tolvan {
namespace {

GtkTreeViewColumn* HandleOf(const wxDataViewColumn& column) {
  return GTK_TREE_VIEW_COLUMN(column.GetGtkHandle());
}

/// Deletes what a signal's handler was given.
template <class Given>
void Forget(gpointer given, GClosure*) {
  delete static_cast<Given*>(given);
}

const wxDataViewColumn* ColumnOf(const wxDataViewCtrl& list, const GtkTreeViewColumn* handle) {
  for (unsigned number = 0; number < list.GetColumnCount(); ++number) {
    if (HandleOf(*list.GetColumn(number)) == handle) return list.GetColumn(number);
  }
  return nullptr;
}

const wxDataViewColumn* ColumnOfModel(const wxDataViewCtrl& list, unsigned modelColumn) {
  for (unsigned number = 0; number < list.GetColumnCount(); ++number) {
    if (list.GetColumn(number)->GetModelColumn() == modelColumn) return list.GetColumn(number);
  }
  return nullptr;
}

struct Tip {
  wxDataViewCtrl* list;
  unsigned keyboardColumn;
};

gboolean OnTip(GtkWidget* widget, gint x, gint y, gboolean byKeyboard, GtkTooltip* tooltip, gpointer data) {
  const Tip& tip = *static_cast<const Tip*>(data);
  auto* const tree = GTK_TREE_VIEW(widget);
  GtkTreePath* path = nullptr;
  if (gtk_tree_view_get_tooltip_context(tree, &x, &y, byKeyboard, nullptr, &path, nullptr) == FALSE) return FALSE;
  const int line = gtk_tree_path_get_indices(path)[0];
  gtk_tree_path_free(path);
  const wxDataViewColumn* column = ColumnOfModel(*tip.list, tip.keyboardColumn);
  if (byKeyboard == FALSE) {
    GtkTreeViewColumn* handle = nullptr;
    if (gtk_tree_view_get_path_at_pos(tree, x, y, nullptr, &handle, nullptr, nullptr) == FALSE) return FALSE;
    column = ColumnOf(*tip.list, handle);
  }
  const auto* const lines = dynamic_cast<const wxDataViewVirtualListModel*>(tip.list->GetModel());
  if (column == nullptr || lines == nullptr) return FALSE;
  wxVariant value;
  lines->GetValueByRow(value, static_cast<unsigned>(line), column->GetModelColumn());
  const wxString text = value.GetString();
  const int room = gtk_tree_view_column_get_width(HandleOf(*column));
  if (tip.list->GetTextExtent(text).x <= room - tip.list->FromDIP(8)) return FALSE;
  gtk_tooltip_set_text(tooltip, text.utf8_str());
  return TRUE;
}

struct HeaderClick {
  std::function<void(std::int32_t)> clicked;
  std::int32_t column;
};

void OnClicked(GtkTreeViewColumn*, gpointer click) {
  const auto& found = *static_cast<const HeaderClick*>(click);
  found.clicked(found.column);
}

}  // namespace

wxDataViewColumn& AppendTexts(wxDataViewCtrl& list, const wxString& title, unsigned modelColumn, int width,
                              wxAlignment alignment) {
  wxDataViewColumn* const column = list.AppendTextColumn(title, modelColumn, wxDATAVIEW_CELL_INERT, width, alignment,
                                                         wxDATAVIEW_COL_RESIZABLE | wxDATAVIEW_COL_REORDERABLE);
  column->GetRenderer()->EnableEllipsize(wxELLIPSIZE_END);
  return *column;
}

void TakeSpareWidth(wxDataViewColumn& column) {
  gtk_tree_view_column_set_expand(HandleOf(column), TRUE);
}

void ShowWholeTexts(wxDataViewCtrl& list, unsigned keyboardColumn) {
  GtkWidget* const tree = list.GtkGetTreeView();
  gtk_widget_set_has_tooltip(tree, TRUE);
  g_signal_connect_data(tree, "query-tooltip", G_CALLBACK(OnTip), new Tip{&list, keyboardColumn}, Forget<Tip>,
                        G_CONNECT_AFTER);
}

void WatchHeaders(wxDataViewCtrl& list, const std::function<void(std::int32_t)>& clicked) {
  for (unsigned number = 0; number < list.GetColumnCount(); ++number) {
    const wxDataViewColumn& column = *list.GetColumn(number);
    gtk_tree_view_column_set_clickable(HandleOf(column), TRUE);
    auto* const click = new HeaderClick{clicked, static_cast<std::int32_t>(column.GetModelColumn())};
    g_signal_connect_data(HandleOf(column), "clicked", G_CALLBACK(OnClicked), click, Forget<HeaderClick>,
                          G_CONNECT_AFTER);
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
