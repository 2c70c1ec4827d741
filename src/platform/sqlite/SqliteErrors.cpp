#include "platform/sqlite/SqliteErrors.h"

#include <sqlite3.h>

#include <cerrno>

namespace tolvan {
namespace {

constexpr int primaryMask = 0xFF;

HostErrorKind KindOfOpenFailure(int systemError) {
  switch (systemError) {
    case EACCES:
    case EPERM:
    case EROFS:
      return HostErrorKind::Access;
    case ENOSPC:
      return HostErrorKind::Full;
    default:
      return HostErrorKind::Unreachable;
  }
}

HostErrorKind KindOfDiskFailure(int extendedCode, int systemError) {
  if (extendedCode == SQLITE_IOERR_CORRUPTFS || extendedCode == SQLITE_IOERR_DATA) return HostErrorKind::Damaged;
  if (extendedCode == SQLITE_IOERR_NOMEM) return HostErrorKind::Failed;
  if (systemError == ENOSPC || systemError == EDQUOT || systemError == EFBIG) return HostErrorKind::Full;
  // The file was there and can no longer be read or written: a folder or medium that went away.
  return HostErrorKind::Unreachable;
}

}  // namespace

HostErrorKind KindOfSqliteCode(int extendedCode, int systemError) {
  switch (extendedCode & primaryMask) {
    case SQLITE_BUSY:
    case SQLITE_LOCKED:
    case SQLITE_PROTOCOL:
      return HostErrorKind::Busy;
    case SQLITE_CORRUPT:
    case SQLITE_NOTADB:
      return HostErrorKind::Damaged;
    case SQLITE_CONSTRAINT:
    case SQLITE_MISMATCH:
      return HostErrorKind::Constraint;
    case SQLITE_FULL:
      return HostErrorKind::Full;
    case SQLITE_READONLY:
    case SQLITE_PERM:
    case SQLITE_AUTH:
      return HostErrorKind::Access;
    case SQLITE_CANTOPEN:
      return KindOfOpenFailure(systemError);
    case SQLITE_IOERR:
      return KindOfDiskFailure(extendedCode, systemError);
    case SQLITE_INTERRUPT:
      return HostErrorKind::Interrupted;
    case SQLITE_TOOBIG:
      return HostErrorKind::InvalidValue;
    case SQLITE_ERROR:
    case SQLITE_RANGE:
    case SQLITE_SCHEMA:
      return HostErrorKind::Statement;
    default:
      return HostErrorKind::Failed;
  }
}

HostError MakeSqliteError(sqlite3* database, int code, std::string context) {
  if (database == nullptr) return {HostErrorKind::Failed, sqlite3_errstr(code), std::move(context), code};
  // A call may return the primary code only; what the connection keeps is finer, as long as it is the same failure.
  const int kept = sqlite3_extended_errcode(database);
  const bool same = (kept & primaryMask) == (code & primaryMask);
  const int extendedCode = same ? kept : code;
  const char* const message = same ? sqlite3_errmsg(database) : sqlite3_errstr(code);
  const HostErrorKind kind = KindOfSqliteCode(extendedCode, sqlite3_system_errno(database));
  return {kind, message, std::move(context), extendedCode};
}

}  // namespace tolvan
