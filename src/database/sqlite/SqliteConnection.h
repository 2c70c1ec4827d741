// An open database file with its watchdog and the state of its transaction. Opening probes the file, so that whatever
// is wrong with it is known at once and with its path.
#pragma once

#include <optional>
#include <string>

#include "database/sqlite/SqliteWatchdog.h"
#include "host/HostError.h"

struct sqlite3;

namespace tolvan {

// The one translator of SQLite's result codes is in SqliteErrors.cpp. People read a Spanish reason, never the engine's
// own words unless only it knows what is wrong: a statement, a column, the message of a trigger of the store's own.

/// The kind for an extended result code that is a failure. `systemError` is the errno that
/// caused it, 0 when there is none.
HostErrorKind KindOfSqliteCode(int extendedCode, int systemError);

/// Whether it is the file that failed, rather than one statement on it: then people must read which file.
bool ConcernsTheFile(HostErrorKind kind);

/// The error of the last call on `database`, which returned `code`. `database` may be null (no memory to open).
HostError MakeSqliteError(sqlite3* database, int code, std::string context);

class SqliteConnection {
 public:
  /// Throws HostError, the path as its context: Unreachable (no such file), Damaged (not a database), Access (no right
  /// to read it), Busy (locked longer than the wait), Configuration (no path).
  explicit SqliteConnection(const SqliteOptions& options);
  ~SqliteConnection();
  SqliteConnection(const SqliteConnection&) = delete;
  SqliteConnection& operator=(const SqliteConnection&) = delete;

  sqlite3* Handle() const { return handle_; }
  SqliteWatchdog& Watchdog() { return watchdog_; }

  /// The error of a call that returned `code`; what the watchdog stopped is Timeout or Interrupted. Where the file is
  /// at fault its path stands before `context`.
  HostError ErrorOf(int code, std::string context) const;

  /// Takes the write lock at once, so that a transaction never fails half way because another program writes.
  void Begin();

  /// As Transaction::Commit. Whatever happens, no transaction is open afterwards.
  void Commit();

  /// Does nothing when no transaction is open.
  void Rollback() noexcept;

  bool InTransaction() const { return inTransaction_; }

  /// Throws the failure that ended the open transaction, if one did: nothing runs after it, because the engine may
  /// have rolled back by itself and would now work without a transaction.
  void RequireUsable() const;

  /// As RequireUsable, and outside a transaction as RequireInPlace; before each statement, not before each row.
  void RequireReady() const;

  /// Throws HostError Unreachable when the file that was opened is no longer the one at its path: what is written then
  /// goes where nobody looks for it.
  void RequireInPlace() const;

  /// Remembers the first failure inside the open transaction.
  void NoteFailure(const HostError& error);

 private:
  void Open(const SqliteOptions& options);
  void OpenFile(const std::string& path, int flags);
  void Close() noexcept;
  void Configure();
  void PreferWriteAheadLog();
  int TryRun(const char* text) noexcept;
  void Run(const char* text);

  std::string path_;
  SqliteWatchdog watchdog_;
  sqlite3* handle_ = nullptr;
  bool inTransaction_ = false;
  std::optional<HostError> failure_;
};

}  // namespace tolvan
