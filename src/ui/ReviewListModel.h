// The lines of the review list by row number. A virtual list control asks it for the texts of the lines that it shows,
// so that a tab of any length appears at once.
#pragma once

#include <cstddef>
#include <functional>
#include <optional>
#include <vector>

#include "import/ImportReview.h"

namespace tolvan {

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

  /// What there is to say of a row beside its texts; empty when it is not in the list.
  std::string NoteOf(std::int32_t row) const { return Contains(row) ? source_->NoteOf(row) : std::string(); }

  /// What there is to say of all rows, in the list or not.
  std::string NoteOfAll() const { return source_ == nullptr ? std::string() : source_->NoteOfAll(); }

  std::string NoteOfChange() const { return source_ == nullptr ? std::string() : source_->NoteOfChange(); }

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

}  // namespace tolvan
