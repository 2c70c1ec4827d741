// What ends a call that takes too long: the wait for another program's lock, the time limit of a statement and the
// user's wish to stop. SQLite asks it through its busy and progress handlers.
#pragma once

#include <chrono>
#include <optional>

#include "database/sqlite/SqliteOptions.h"
#include "host/HostError.h"
#include "system/Waiting.h"

struct sqlite3;

namespace tolvan {

class SqliteWatch {
 public:
  explicit SqliteWatch(const SqliteOptions& options);
  SqliteWatch(const SqliteWatch&) = delete;
  SqliteWatch& operator=(const SqliteWatch&) = delete;

  /// `database` must not outlive this object.
  void Install(sqlite3* database);

  /// A call begins. While it runs the statement limit and the interruption count; without it (commit and rollback,
  /// which must not be cut short once they work) only a wait for a lock can end.
  void BeginStatement() noexcept;
  void BeginControl() noexcept;

  /// The call has come back: nobody is waited for any more.
  void EndCall() noexcept { waiting_.reset(); }

  /// Why the call that just failed was stopped from here: Timeout or Interrupted; nothing when it was not.
  std::optional<HostErrorKind> StopCause() const noexcept { return cause_; }

 private:
  using Moment = std::chrono::steady_clock::time_point;

  static int OnProgress(void* self) noexcept;
  static int OnBusy(void* self, int attempts) noexcept;
  bool MustStop() noexcept;
  bool MayWaitOn(int attempts) noexcept;
  bool Interrupted() noexcept;

  std::chrono::milliseconds busyWait_;
  std::chrono::milliseconds statementLimit_;
  const Interruption* interruption_;
  std::optional<Moment> workBegan_;
  Moment waitBegan_;
  std::optional<Waiting> waiting_;
  std::optional<HostErrorKind> cause_;
  bool statementRuns_ = false;
};

}  // namespace tolvan
