// Choices of this connection:
// - Write-ahead log, so that the point of sale reads while an import writes. Where the log cannot be (a read-only file
//   or medium, a lock held by somebody) the file keeps the journal it has. The choice is written into the file, so it
//   is made when writing begins: reading changes nothing.
// - synchronous FULL: with the log, NORMAL could lose the last commits at a power failure; a price list that was
//   reported as imported must be there. It costs one sync for each transaction, not for each row.
// - Query planner stability: plans do not depend on bound values, so that binding a new value never prepares a
// statement again.
#include "database/sqlite/SqliteConnection.h"

#include <sqlite3.h>

#include <filesystem>
#include <system_error>

namespace tolvan {
namespace {

constexpr const char* probe = "SELECT count(*) FROM sqlite_schema";

bool IsPermanentOpenFailure(int code) {
  const int primary = code & 0xFF;
  return primary == SQLITE_CANTOPEN || primary == SQLITE_READONLY;
}

/// A log with content would be ignored by an immutable connection.
bool HasLog(const std::string& path) {
  std::error_code ignored;
  const std::filesystem::path log(std::u8string(path.begin(), path.end()) + u8"-wal");
  return std::filesystem::exists(log, ignored) && std::filesystem::file_size(log, ignored) > 0;
}

/// The address of a file on a medium that nobody writes.
std::string ImmutableAddress(const std::string& path) {
  constexpr std::string_view digits = "0123456789ABCDEF";
  std::string address = "file:";
  for (const char c : path) {
    if (c == '%' || c == '?' || c == '#') {
      const auto byte = static_cast<unsigned char>(c);
      address.append({'%', digits[byte >> 4], digits[byte & 15]});
    } else {
      address += c;
    }
  }
  return address + "?immutable=1";
}

}  // namespace

SqliteConnection::SqliteConnection(const SqliteOptions& options) : path_(options.path), watchdog_(options) {
  try {
    Open(options);
    Configure();
  } catch (...) {
    Close();
    throw;
  }
}

SqliteConnection::~SqliteConnection() {
  Rollback();
  Close();
}

void SqliteConnection::Open(const SqliteOptions& options) {
  if (path_.empty()) throw HostError(HostErrorKind::Configuration, "falta la ruta de la base de datos");
  OpenFile(path_, SQLITE_OPEN_READWRITE | (options.createIfMissing ? SQLITE_OPEN_CREATE : 0));
  watchdog_.BeginControl();
  const int code = TryRun(probe);
  if (code == SQLITE_OK) return;
  // A file with a write-ahead log wants to write beside itself even to be read. Where it cannot, and no other program
  // has left a log there, the file alone is the whole truth.
  if (!IsPermanentOpenFailure(code) || HasLog(path_)) throw ErrorOf(code, path_);
  Close();
  OpenFile(ImmutableAddress(path_), SQLITE_OPEN_READONLY | SQLITE_OPEN_URI);
  Run(probe);
}

void SqliteConnection::OpenFile(const std::string& path, int flags) {
  const int code =
      sqlite3_open_v2(path.c_str(), &handle_, flags | SQLITE_OPEN_NOMUTEX | SQLITE_OPEN_EXRESCODE, nullptr);
  if (code != SQLITE_OK) throw MakeSqliteError(handle_, code, path_);
  watchdog_.Install(handle_);
}

void SqliteConnection::Close() noexcept {
  sqlite3_close_v2(handle_);
  handle_ = nullptr;
}

void SqliteConnection::Configure() {
  sqlite3_db_config(handle_, SQLITE_DBCONFIG_ENABLE_QPSG, 1, nullptr);
  Run("PRAGMA foreign_keys=ON");
  Run("PRAGMA synchronous=FULL");
  Run("PRAGMA cache_size=-65536");            // KiB; an upper bound, taken only as it is needed
  Run("PRAGMA journal_size_limit=67108864");  // bytes; what a large import leaves of its log
}

void SqliteConnection::PreferWriteAheadLog() {
  if (sqlite3_db_readonly(handle_, "main") == 1) return;
  const int code = TryRun("PRAGMA journal_mode=WAL");
  const int primary = code & 0xFF;
  if (code == SQLITE_OK || primary == SQLITE_BUSY || IsPermanentOpenFailure(code)) return;
  throw ErrorOf(code, path_);
}

HostError SqliteConnection::ErrorOf(int code, std::string context) const {
  const HostError error = MakeSqliteError(handle_, code, std::move(context));
  const std::optional<HostErrorKind> cause = watchdog_.StopCause();
  if (!cause) {
    if (error.Context() == path_ || !ConcernsTheFile(error.Kind())) return error;
    return {error.Kind(), error.what(), path_ + "\r\n" + error.Context(), error.NativeCode()};
  }
  const char* const reason = *cause == HostErrorKind::Timeout ? "la instrucción tardó más que el tiempo permitido"
                                                              : "la operación fue detenida por el usuario";
  return {*cause, reason, error.Context(), error.NativeCode()};
}

int SqliteConnection::TryRun(const char* text) noexcept {
  const int code = sqlite3_exec(handle_, text, nullptr, nullptr, nullptr);
  watchdog_.EndCall();
  return code;
}

void SqliteConnection::Run(const char* text) {
  const int code = TryRun(text);
  if (code != SQLITE_OK) throw ErrorOf(code, path_);
}

void SqliteConnection::Begin() {
  if (inTransaction_) throw HostError(HostErrorKind::Statement, "ya hay una transacción abierta", path_);
  RequireInPlace();
  watchdog_.BeginControl();
  // Only a rollback that failed leaves one open; without this the work of the next would join it.
  if (sqlite3_get_autocommit(handle_) == 0) Run("ROLLBACK");
  PreferWriteAheadLog();
  Run("BEGIN IMMEDIATE");
  failure_.reset();
  inTransaction_ = true;
}

void SqliteConnection::Commit() {
  if (!inTransaction_) throw HostError(HostErrorKind::Statement, "no hay una transacción abierta", path_);
  if (failure_) {
    const HostError failure = *failure_;
    Rollback();
    throw HostError(failure);
  }
  try {
    RequireInPlace();
  } catch (const HostError&) {
    Rollback();
    throw;
  }
  watchdog_.BeginControl();
  const int code = TryRun("COMMIT");
  if (code != SQLITE_OK) {
    const HostError error = ErrorOf(code, path_);
    Rollback();
    throw HostError(error);
  }
  inTransaction_ = false;
}

void SqliteConnection::Rollback() noexcept {
  if (!inTransaction_) return;
  inTransaction_ = false;
  failure_.reset();
  watchdog_.BeginControl();
  if (sqlite3_get_autocommit(handle_) == 0) TryRun("ROLLBACK");
}

void SqliteConnection::RequireUsable() const {
  if (failure_) throw HostError(*failure_);
}

void SqliteConnection::RequireReady() const {
  RequireUsable();
  // Inside a transaction its begin and its commit look; many queries that share one read are not worth a look each.
  if (sqlite3_get_autocommit(handle_) != 0) RequireInPlace();
}

void SqliteConnection::RequireInPlace() const {
  int moved = 0;
  const int code = sqlite3_file_control(handle_, nullptr, SQLITE_FCNTL_HAS_MOVED, &moved);
  if (code != SQLITE_OK || moved == 0) return;
  throw HostError(HostErrorKind::Unreachable,
                  "el archivo de la base de datos ya no está en su lugar: fue movido, borrado o reemplazado", path_);
}

void SqliteConnection::NoteFailure(const HostError& error) {
  if (inTransaction_ && !failure_) failure_ = error;
}

}  // namespace tolvan
