#include "desktop/ListText.h"

#include <gtk/gtk.h>

namespace tolvan {
namespace {

const wxDataViewColumn* ColumnBehind(const wxDataViewCtrl& list, const GtkTreeViewColumn* handle) {
  for (unsigned number = 0; number < list.GetColumnCount(); ++number) {
    if (GTK_TREE_VIEW_COLUMN(list.GetColumn(number)->GetGtkHandle()) == handle) return list.GetColumn(number);
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
    column = ColumnBehind(*tip.list, handle);
  }
  const auto* const lines = dynamic_cast<const wxDataViewVirtualListModel*>(tip.list->GetModel());
  if (column == nullptr || lines == nullptr) return FALSE;
  wxVariant value;
  lines->GetValueByRow(value, static_cast<unsigned>(line), column->GetModelColumn());
  const wxString text = value.GetString();
  const int room = gtk_tree_view_column_get_width(GTK_TREE_VIEW_COLUMN(column->GetGtkHandle()));
  if (tip.list->GetTextExtent(text).x <= room - tip.list->FromDIP(8)) return FALSE;
  gtk_tooltip_set_text(tooltip, text.utf8_str());
  return TRUE;
}

void Forget(gpointer tip, GClosure*) {
  delete static_cast<Tip*>(tip);
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
  gtk_tree_view_column_set_expand(GTK_TREE_VIEW_COLUMN(column.GetGtkHandle()), TRUE);
}

void ShowWholeTexts(wxDataViewCtrl& list, unsigned keyboardColumn) {
  GtkWidget* const tree = list.GtkGetTreeView();
  gtk_widget_set_has_tooltip(tree, TRUE);
  g_signal_connect_data(tree, "query-tooltip", G_CALLBACK(OnTip), new Tip{&list, keyboardColumn}, Forget,
                        G_CONNECT_AFTER);
}

}  // namespace tolvan
