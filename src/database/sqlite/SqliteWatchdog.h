// How a database file is opened, and what ends a call that takes too long: the limit of the wait for another program's
// lock, the time limit of a statement and the user's wish to stop.
#pragma once

#include <chrono>
#include <optional>
#include <string>

#include "host/HostError.h"
#include "system/Waiting.h"

struct sqlite3;

namespace tolvan {

/// How a database file is opened and how long its calls may take.
struct SqliteOptions {
  /// UTF-8. ":memory:" is a database of this connection alone.
  std::string path;
  /// How long one call waits for another program's lock.
  std::chrono::milliseconds busyWait{5'000};
  /// False: a missing file is HostError Unreachable.
  bool createIfMissing = false;
  /// How long the database may work on one call; zero is without a limit.
  std::chrono::milliseconds statementLimit{30'000};
  /// Asked while the database works or waits; null is never. Must outlive the connection.
  const Interruption* interruption = nullptr;
};

/// Watches the calls of one connection. SQLite asks it through its busy and progress handlers.
class SqliteWatchdog {
 public:
  explicit SqliteWatchdog(const SqliteOptions& options);
  SqliteWatchdog(const SqliteWatchdog&) = delete;
  SqliteWatchdog& operator=(const SqliteWatchdog&) = delete;

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
