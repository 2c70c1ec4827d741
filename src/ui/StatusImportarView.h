// What the review window shows, seen from its logic. A view only shows and forwards; it decides nothing.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "host/SqlStatement.h"
#include "host/UserInterface.h"
#include "ui/ReviewListModel.h"

namespace tolvan {

class StatusImportarView : public StatusWindow {
 public:
  virtual ReviewListModel& lvStatus() = 0;

  /// The explanation of the current tab, lbExp.
  virtual void SetExplanation(std::string_view text) = 0;

  /// What there is to say of the selected row, or without one of the list, below it; may be empty.
  virtual void SetNote(std::string_view text) = 0;

  /// One of the summary lines lCant; `index` is 0 to 2.
  virtual void SetSummary(int index, std::string_view text) = 0;

  /// Enables or disables bAceptar.
  virtual void EnableAccept(bool enabled) = 0;

  /// Pops mnuRenglon up at the mouse with its three entries enabled or not.
  virtual void PopUpMenu(bool associate, bool dissociate, bool setCode) = 0;

  /// The host's search over the items of a query that selects idItem. `subject` says for which row, Spanish. Nothing
  /// when the user cancels.
  virtual std::optional<std::string> PickItem(const SqlStatement& items, std::string_view subject) = 0;

  /// Returns when Close was called.
  virtual void ShowModal() = 0;
  virtual void Close() = 0;
};

}  // namespace tolvan
