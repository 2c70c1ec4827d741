#include "database/sqlite/SqliteWatchdog.h"

#include <sqlite3.h>

#include <algorithm>
#include <array>

#include "host/UserInterface.h"

namespace tolvan {
namespace {

// Some tens of microseconds of the database's work between two questions.
constexpr int stepsBetweenQuestions = 2'000;

constexpr std::string_view whoIsWaitedFor = "Otro programa está usando la base de datos; esperando…";

using std::chrono::milliseconds;
using std::chrono::steady_clock;

}  // namespace

SqliteWatchdog::SqliteWatchdog(const SqliteOptions& options)
    : busyWait_(options.busyWait), statementLimit_(options.statementLimit), interruption_(options.interruption) {}

void SqliteWatchdog::Install(sqlite3* database) {
  sqlite3_busy_handler(database, &SqliteWatchdog::OnBusy, this);
  sqlite3_progress_handler(database, stepsBetweenQuestions, &SqliteWatchdog::OnProgress, this);
}

void SqliteWatchdog::BeginStatement() noexcept {
  cause_.reset();
  // The clock is read at the first question, because most statements end before it.
  workBegan_.reset();
  statementRuns_ = true;
}

void SqliteWatchdog::BeginControl() noexcept {
  cause_.reset();
  statementRuns_ = false;
}

int SqliteWatchdog::OnProgress(void* self) noexcept {
  return static_cast<SqliteWatchdog*>(self)->MustStop() ? 1 : 0;
}

int SqliteWatchdog::OnBusy(void* self, int attempts) noexcept {
  return static_cast<SqliteWatchdog*>(self)->MayWaitOn(attempts) ? 1 : 0;
}

bool SqliteWatchdog::MustStop() noexcept {
  EndCall();  // it works, so it no longer waits
  if (!statementRuns_) return false;
  if (Interrupted()) return true;
  if (statementLimit_ == milliseconds::zero()) return false;
  const Moment now = steady_clock::now();
  if (!workBegan_) workBegan_ = now;
  if (now - *workBegan_ < statementLimit_) return false;
  cause_ = HostErrorKind::Timeout;
  return true;
}

bool SqliteWatchdog::MayWaitOn(int attempts) noexcept {
  constexpr std::array<int, 6> pauses{1, 2, 5, 10, 20, 50};
  const Moment now = steady_clock::now();
  if (attempts == 0) {
    waitBegan_ = now;
    if (!waiting_) waiting_.emplace(interruption_, whoIsWaitedFor, lockPatience);
  }
  if (Interrupted()) return false;
  const auto left = std::chrono::ceil<milliseconds>(busyWait_ - (now - waitBegan_));
  if (left <= milliseconds::zero()) return false;
  const auto pause = milliseconds(pauses[std::min(static_cast<std::size_t>(attempts), pauses.size() - 1)]);
  static_cast<void>(waiting_->Rest(std::min(pause, left)));
  return true;
}

bool SqliteWatchdog::Interrupted() noexcept {
  if (interruption_ == nullptr || !interruption_->Requested()) return false;
  cause_ = HostErrorKind::Interrupted;
  return true;
}

}  // namespace tolvan
