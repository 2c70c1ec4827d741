#include "desktop/ReviewListView.h"

#include <array>

#include "desktop/Controls.h"
#include "desktop/ListColumns.h"

namespace tolvan {

/// The lines as the list asks for them, column by column; the texts of the last line asked for are kept.
class ReviewLines : public wxDataViewVirtualListModel {
 public:
  explicit ReviewLines(const ReviewListModel& rows) : rows_(rows) {}

  void ShowAnew() {
    line_ = noLine;
    Reset(static_cast<unsigned>(rows_.Lines()));
  }

  void GetValueByRow(wxVariant& value, unsigned line, unsigned column) const override {
    if (line >= rows_.Lines()) {
      value = wxString();
      return;
    }
    if (line_ != line) texts_ = rows_.TextsOf(line);
    line_ = line;
    value = ToWx(texts_.at(column));
  }
  bool SetValueByRow(const wxVariant&, unsigned, unsigned) override { return false; }

 private:
  static constexpr unsigned noLine = ~0U;

  const ReviewListModel& rows_;
  mutable unsigned line_ = noLine;
  mutable ReviewLine texts_;
};

namespace {

constexpr unsigned descriptionColumn = 3;
constexpr std::string_view layoutTag = "frmStatusImportar_lvStatus";

struct Column {
  const char* title;
  int width;  ///< at first, in pixels of a plain screen and the usual font
  wxAlignment alignment;
};

constexpr std::array<Column, 8> columns{{{"Excel", 120, wxALIGN_LEFT},
                                         {"Tolvan", 120, wxALIGN_LEFT},
                                         {"Libre", 60, wxALIGN_CENTRE},
                                         {"Descripción", 120, wxALIGN_LEFT},
                                         {"Costo", 90, wxALIGN_RIGHT},
                                         {"PVP", 90, wxALIGN_RIGHT},
                                         {"Dif", 85, wxALIGN_RIGHT},
                                         {"Acción", 100, wxALIGN_LEFT}}};

}  // namespace

ReviewListView::ReviewListView(wxWindow* parent, AppServices& services)
    : wxDataViewCtrl(parent, wxID_ANY, wxDefaultPosition, wxDefaultSize, wxDV_SINGLE | wxDV_ROW_LINES),
      services_(services),
      rows_([this] { ShowRows(); }),
      lines_(new ReviewLines(rows_)),
      layout_(LoadListLayout(services, layoutTag, columns.size())) {
  NameControl(*this, "lvStatus", "Renglones");
  AssociateModel(lines_.get());
  MakeColumns();
  ShowWholeTexts(*this, descriptionColumn);
  rows_.SortBy(layout_.sortColumn, layout_.ascending);
  CallAfter(&ReviewListView::ShowOrder);  // the toolkit takes every arrow away when it makes the headers
  WatchHeaders(*this, [this](std::int32_t column) { OnHeader(column); });
}

ReviewListView::~ReviewListView() = default;

/// What columns are made narrower by when the screen has no room for all of them.
double ReviewListView::Narrowing() const {
  int wanted = 0;
  for (const Column& column : columns) wanted += WidthScaledToText(*this, column.width);
  const int room = wxGetClientDisplayRect().width - FromDIP(60);
  return wxMin(1.0, static_cast<double>(room) / wanted);
}

void ReviewListView::MakeColumns() {
  const double narrowing = Narrowing();
  for (const std::int32_t number : layout_.order) {
    const auto place = static_cast<std::size_t>(number);
    const Column& column = columns.at(place);
    const int stored = layout_.widths.at(place);
    const int wanted = static_cast<int>(WidthScaledToText(*this, column.width) * narrowing);
    const int width = stored > 0 ? FromDIP(stored / twipsPerPixel) : wanted;
    wxDataViewColumn& made =
        AppendTexts(*this, wxString::FromUTF8(column.title), static_cast<unsigned>(number), width, column.alignment);
    if (place == descriptionColumn) TakeSpareWidth(made);
  }
}

int ReviewListView::HeightOf(int lines) const {
  const int line = GetCharHeight() + FromDIP(6);
  return (lines + 1) * line + FromDIP(16);
}

std::int32_t ReviewListView::SelectedRow() const {
  const wxDataViewItem item = GetSelection();
  if (!item.IsOk()) return 0;
  const unsigned line = lines_->GetRow(item);
  return line < rows_.Lines() ? rows_.RowOfLine(line) : 0;
}

/// A click sorts upward, the next downward, the third gives back the order of the file.
void ReviewListView::OnHeader(std::int32_t column) {
  if (layout_.sortColumn != column) {
    layout_.sortColumn = column;
    layout_.ascending = true;
  } else if (layout_.ascending) {
    layout_.ascending = false;
  } else {
    layout_.sortColumn = -1;
  }
  rows_.SortBy(layout_.sortColumn, layout_.ascending);
  ShowOrder();
}

void ReviewListView::ShowOrder() {
  for (unsigned place = 0; place < GetColumnCount(); ++place) {
    wxDataViewColumn& column = *GetColumn(place);
    const bool sorts = static_cast<std::int32_t>(column.GetModelColumn()) == layout_.sortColumn;
    const SortArrow direction = layout_.ascending ? SortArrow::Ascending : SortArrow::Descending;
    ShowArrow(column, sorts ? direction : SortArrow::None);
  }
}

void ReviewListView::ShowRows() {
  const std::int32_t selected = SelectedRow();
  lines_->ShowAnew();
  if (const auto line = rows_.LineOfRow(selected)) {
    const wxDataViewItem item = lines_->GetItem(static_cast<unsigned>(*line));
    Select(item);
    EnsureVisible(item);
  }
}

void ReviewListView::SaveColumns() const {
  ListLayout layout = layout_;
  layout.widths.assign(columns.size(), 0);
  layout.order = ColumnsOnScreen(*this);
  for (unsigned number = 0; number < GetColumnCount(); ++number) {
    const wxDataViewColumn& column = *GetColumn(number);
    layout.widths.at(column.GetModelColumn()) = ToDIP(WidthOf(column)) * twipsPerPixel;
  }
  SaveListLayout(services_, layoutTag, layout);
}

}  // namespace tolvan
