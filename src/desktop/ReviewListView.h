// lvStatus: the rows of the current tab in a native list that formats only the lines on the screen.
#pragma once

#include <wx/dataview.h>

#include "host/HostContext.h"
#include "ui/ReviewView.h"
#include "ui/WindowLayout.h"

namespace tolvan {

class ReviewLines;

class ReviewListView : public wxDataViewCtrl {
 public:
  /// `services` keeps the columns as the user left them.
  ReviewListView(wxWindow* parent, AppServices& services);
  ~ReviewListView() override;

  ReviewListModel& Rows() { return rows_; }

  /// The row of the selected line; 0 when none is selected.
  std::int32_t SelectedRow() const;

  /// The height in pixels that shows the header and so many lines.
  int HeightOf(int lines) const;

  void SaveColumns() const;

 private:
  double Narrowing() const;
  void MakeColumns();
  void OnHeader(std::int32_t column);
  void ShowOrder();
  void ShowRows();

  AppServices& services_;
  ReviewListModel rows_;
  wxObjectDataPtr<ReviewLines> lines_;
  ListLayout layout_;
};

}  // namespace tolvan
