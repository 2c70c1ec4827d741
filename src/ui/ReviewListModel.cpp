#include "ui/ReviewListModel.h"

#include <algorithm>
#include <utility>

namespace tolvan {

void ReviewListModel::UnlockUpdates() noexcept {
  if (--locks_ == 0 && std::exchange(changedWhileLocked_, false)) Changed();
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
  const auto found = std::lower_bound(rows_.begin(), rows_.end(), row);
  if (found == rows_.end() || *found != row) return std::nullopt;
  return static_cast<std::size_t>(found - rows_.begin());
}

void ReviewListModel::Changed() {
  if (locks_ > 0) {
    changedWhileLocked_ = true;
  } else if (changed_) {
    changed_();
  }
}

}  // namespace tolvan
