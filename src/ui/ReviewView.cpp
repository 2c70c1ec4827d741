#include "ui/ReviewView.h"

#include <algorithm>
#include <utility>

#include "base/Text.h"

namespace tolvan {
namespace {

/// What a line is ordered by: amounts by their value, lines without one first; texts without regard to case.
struct SortKey {
  std::optional<Currency> amount;
  std::string text;
  std::int32_t row = 0;
};

bool Before(const SortKey& one, const SortKey& other) {
  if (one.amount != other.amount) return one.amount < other.amount;
  return one.text < other.text;
}

}  // namespace

void ReviewListModel::UnlockUpdates() noexcept {
  if (--locks_ > 0 || !std::exchange(changedWhileLocked_, false)) return;
  try {
    Changed();
  } catch (const std::exception&) {
    // Without memory to sort or draw, the lines stand in the order of the file.
    return;
  }
}

void ReviewListModel::Clear(const ReviewLineSource& source) {
  source_ = &source;
  rows_.clear();
  Changed();
}

void ReviewListModel::Add(std::int32_t row) {
  rows_.push_back(row);
  Changed();
}

void ReviewListModel::Refresh(std::int32_t row) {
  if (Contains(row)) Changed();
}

void ReviewListModel::Remove(std::int32_t row) {
  const std::optional<std::size_t> line = LineOfRow(row);
  if (!line) return;
  rows_.erase(rows_.begin() + static_cast<std::ptrdiff_t>(*line));
  Changed();
}

std::optional<std::size_t> ReviewListModel::LineOfRow(std::int32_t row) const {
  const bool sorted = sortColumn_ >= 0;
  const auto found =
      sorted ? std::find(rows_.begin(), rows_.end(), row) : std::lower_bound(rows_.begin(), rows_.end(), row);
  if (found == rows_.end() || *found != row) return std::nullopt;
  return static_cast<std::size_t>(found - rows_.begin());
}

void ReviewListModel::SortBy(int column, bool ascending) {
  sortColumn_ = column;
  ascending_ = ascending;
  Changed();
}

void ReviewListModel::Sort() {
  std::sort(rows_.begin(), rows_.end());
  if (sortColumn_ < 0 || source_ == nullptr) return;
  const auto column = static_cast<std::size_t>(sortColumn_);
  std::vector<SortKey> keys;
  keys.reserve(rows_.size());
  for (const std::int32_t row : rows_) {
    keys.push_back({.amount = source_->AmountOf(row, column), .text = {}, .row = row});
    if (!keys.back().amount) keys.back().text = ToLower(source_->LineOf(row).at(column));
  }
  std::stable_sort(keys.begin(), keys.end(), [this](const SortKey& one, const SortKey& other) {
    const SortKey& upper = ascending_ ? one : other;
    const SortKey& lower = ascending_ ? other : one;
    return Before(upper, lower);
  });
  std::transform(keys.begin(), keys.end(), rows_.begin(), [](const SortKey& key) { return key.row; });
}

void ReviewListModel::Changed() {
  if (locks_ > 0) {
    changedWhileLocked_ = true;
    return;
  }
  Sort();
  if (changed_) changed_();
}

}  // namespace tolvan
