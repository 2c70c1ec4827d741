// What the review window shows, seen from its logic, and the model of its list. A view only shows and forwards; it
// decides nothing.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "host/SqlStatement.h"
#include "host/UserInterface.h"
#include "import/ImportReview.h"

namespace tolvan {

/// The lines of the review list by row number. A virtual list control asks it for the texts of the lines that it shows,
/// so that a tab of any length appears at once.
class ReviewListModel final : public ReviewList {
 public:
  /// `changed` is called after every change, once for all changes made while updates are locked. May be empty.
  explicit ReviewListModel(std::function<void()> changed = {}) : changed_(std::move(changed)) {}

  void LockUpdates() override { ++locks_; }
  void UnlockUpdates() noexcept override;
  void Clear(const ReviewLineSource& source) override;
  void Add(std::int32_t row) override;
  void Refresh(std::int32_t row) override;
  void Remove(std::int32_t row) override;
  bool Contains(std::int32_t row) const override { return LineOfRow(row).has_value(); }

  /// Orders the lines by a column, from 0; -1 is the order of the file. Lines that are equal there stay in that order.
  void SortBy(int column, bool ascending);

  std::size_t Lines() const { return rows_.size(); }

  /// The row that a line shows, the line that shows a row, and a line's texts; `line` is below Lines().
  std::int32_t RowOfLine(std::size_t line) const { return rows_[line]; }
  std::optional<std::size_t> LineOfRow(std::int32_t row) const;
  ReviewLine TextsOf(std::size_t line) const { return source_->LineOf(rows_[line]); }

  /// What there is to say about a row besides its texts; empty when it is not in the list.
  std::string NoteOf(std::int32_t row) const { return Contains(row) ? source_->NoteOf(row) : std::string(); }

  /// What there is to say about all rows, in the list or not.
  std::string NoteOfAll() const { return source_ == nullptr ? std::string() : source_->NoteOfAll(); }

  std::string NoteOfChange() const { return source_ == nullptr ? std::string() : source_->NoteOfChange(); }

  /// Why the rows were last not applied, where no box has shown it yet.
  std::string UntoldFailure() const { return source_ == nullptr ? std::string() : source_->UntoldFailure(); }

 private:
  void Changed();
  void Sort();

  std::function<void()> changed_;
  const ReviewLineSource* source_ = nullptr;
  std::vector<std::int32_t> rows_;  // as they are shown
  int sortColumn_ = -1;
  bool ascending_ = true;
  int locks_ = 0;
  bool changedWhileLocked_ = false;
};

class ReviewView : public StatusWindow {
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

  /// Returns when CloseWindow was called.
  virtual void ShowUntilClosed() = 0;
  virtual void CloseWindow() = 0;
};

}  // namespace tolvan
