// The search over items: what is typed filters the list; Enter or a double click takes the selected item.
#pragma once

#include <wx/dataview.h>
#include <wx/dialog.h>

#include <functional>
#include <optional>
#include <string>
#include <string_view>

#include "ui/ItemSearch.h"

class wxButton;
class wxTextCtrl;

namespace tolvan {

class FoundLines;

class ItemSearchDialog : public wxDialog {
 public:
  /// `subject` says for which row the item is. `search` must outlive the dialog.
  ItemSearchDialog(wxWindow* parent, ItemSearch& search, std::string_view subject,
                   std::function<std::string(Currency)> priceText);
  ~ItemSearchDialog() override;

  /// The code of the selected item; nothing when none is.
  std::optional<std::string> Chosen() const;

 private:
  void BindEvents();
  void Filter();
  void MoveSelection(int lines);

  ItemSearch& search_;
  wxTextCtrl* filter_ = nullptr;
  wxDataViewCtrl* list_ = nullptr;
  wxButton* accept_ = nullptr;
  wxObjectDataPtr<FoundLines> lines_;
};

}  // namespace tolvan
