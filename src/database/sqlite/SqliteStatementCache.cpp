#include "database/sqlite/SqliteStatementCache.h"

#include <algorithm>
#include <utility>

namespace tolvan {

SqliteStatementCache::Lease::Lease(Entry& entry) : entry_(&entry), statement_(entry.statement.get()) {
  entry.lent = true;
}

SqliteStatementCache::Lease::Lease(std::unique_ptr<SqliteStatement> own)
    : own_(std::move(own)), statement_(own_.get()) {}

SqliteStatementCache::Lease::Lease(Lease&& other) noexcept
    : entry_(std::exchange(other.entry_, nullptr)),
      own_(std::move(other.own_)),
      statement_(std::exchange(other.statement_, nullptr)) {}

SqliteStatementCache::Lease::~Lease() {
  if (statement_ != nullptr) statement_->Reset();
  if (entry_ != nullptr) entry_->lent = false;
}

SqliteStatementCache::SqliteStatementCache(SqliteConnection& connection, std::size_t capacity)
    : connection_(connection), capacity_(capacity) {}

SqliteStatementCache::Lease SqliteStatementCache::Acquire(const SqlStatement& statement) {
  const std::string& text = statement.ParameterText();
  // A batch repeats one text many times over: then it is in front, and needs no look-up.
  if (!entries_.empty() && !entries_.front().lent && entries_.front().text == text) return Lease(entries_.front());
  const auto found = positions_.find(text);
  if (found != positions_.end() && !found->second->lent) {
    entries_.splice(entries_.begin(), entries_, found->second);
    return Lease(entries_.front());
  }
  auto prepared = std::make_unique<SqliteStatement>(connection_, statement);
  if (found != positions_.end() || !MakeRoom()) return Lease(std::move(prepared));
  entries_.push_front({text, std::move(prepared), false});
  positions_.emplace(entries_.front().text, entries_.begin());
  return Lease(entries_.front());
}

bool SqliteStatementCache::MakeRoom() {
  if (entries_.size() < capacity_) return true;
  const auto oldest = std::find_if(entries_.rbegin(), entries_.rend(), [](const Entry& entry) { return !entry.lent; });
  if (oldest == entries_.rend()) return false;
  positions_.erase(oldest->text);
  entries_.erase(std::next(oldest).base());
  return true;
}

}  // namespace tolvan
