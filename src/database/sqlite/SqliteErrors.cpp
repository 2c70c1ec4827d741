#include "database/sqlite/SqliteConnection.h"

#include <sqlite3.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <string_view>

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
  if (extendedCode == SQLITE_IOERR_DATA) return HostErrorKind::Damaged;
  if (extendedCode == SQLITE_IOERR_NOMEM) return HostErrorKind::Failed;
  if (systemError == ENOSPC || systemError == EDQUOT || systemError == EFBIG) return HostErrorKind::Full;
  // The file was there and can no longer be read or written: a folder or medium that went away, a disk that fails. Also
  // what SQLite calls a corrupt file system is no more than a read that the system refused.
  return HostErrorKind::Unreachable;
}

struct Reason {
  int code;
  std::string_view text;
};

constexpr std::string_view unreadable =
    "no se pudo leer una página de la base de datos; revise el disco o la unidad donde está";
constexpr std::string_view unwritable =
    "no se pudo escribir en la base de datos; revise el disco o la unidad donde está";
constexpr std::string_view presentKey = "ya hay un registro con esa clave";
constexpr std::string_view noMemory = "memoria insuficiente";

// By extended code, or by the primary one where the finer one tells people nothing more.
constexpr std::array reasons{
    Reason{SQLITE_BUSY, "otro programa está usando la base de datos"},
    Reason{SQLITE_BUSY_RECOVERY, "otro programa está recuperando la base de datos"},
    Reason{SQLITE_BUSY_SNAPSHOT, "otro programa cambió la base de datos mientras se leía"},
    Reason{SQLITE_LOCKED, "la tabla está en uso"},
    Reason{SQLITE_PROTOCOL, "demasiados programas a la vez esperan por la base de datos"},
    Reason{SQLITE_CORRUPT, "las páginas de la base de datos no concuerdan entre sí"},
    Reason{SQLITE_NOTADB, "el archivo no es una base de datos"},
    Reason{SQLITE_CONSTRAINT, "un dato no cumple una condición de la tabla"},
    Reason{SQLITE_CONSTRAINT_PRIMARYKEY, presentKey},
    Reason{SQLITE_CONSTRAINT_UNIQUE, presentKey},
    Reason{SQLITE_CONSTRAINT_ROWID, presentKey},
    Reason{SQLITE_CONSTRAINT_NOTNULL, "falta un dato obligatorio"},
    Reason{SQLITE_CONSTRAINT_FOREIGNKEY, "el registro nombra a otro que no existe, o es nombrado por otros"},
    Reason{SQLITE_MISMATCH, "un dato no es del tipo de su columna"},
    Reason{SQLITE_FULL, "la base de datos no puede crecer más"},
    Reason{SQLITE_READONLY, "la base de datos es de solo lectura"},
    Reason{SQLITE_READONLY_DBMOVED, "el archivo de la base de datos fue movido o borrado"},
    Reason{SQLITE_READONLY_DIRECTORY, "no se puede escribir en la carpeta de la base de datos"},
    Reason{SQLITE_PERM, "el sistema no permite abrirla así"},
    Reason{SQLITE_AUTH, "la instrucción no está permitida"},
    Reason{SQLITE_CANTOPEN, "no se puede abrir el archivo"},
    Reason{SQLITE_IOERR, "el disco no pudo leer o escribir la base de datos"},
    Reason{SQLITE_IOERR_READ, unreadable},
    Reason{SQLITE_IOERR_SHORT_READ, unreadable},
    Reason{SQLITE_IOERR_CORRUPTFS, unreadable},
    Reason{SQLITE_IOERR_WRITE, unwritable},
    Reason{SQLITE_IOERR_FSYNC, unwritable},
    Reason{SQLITE_IOERR_DIR_FSYNC, unwritable},
    Reason{SQLITE_IOERR_TRUNCATE, unwritable},
    Reason{SQLITE_IOERR_DATA, "una página de la base de datos no es lo que se escribió en ella"},
    Reason{SQLITE_IOERR_NOMEM, noMemory},
    Reason{SQLITE_IOERR_LOCK, "el sistema no pudo bloquear el archivo"},
    Reason{SQLITE_NOMEM, noMemory},
    Reason{SQLITE_INTERRUPT, "la operación fue detenida"},
    Reason{SQLITE_TOOBIG, "un texto es demasiado largo"},
    Reason{SQLITE_SCHEMA, "las tablas cambiaron mientras se usaban"},
};

std::string_view ReasonOf(int extendedCode) {
  for (const int code : {extendedCode, extendedCode & primaryMask}) {
    const auto found = std::ranges::find(reasons, code, &Reason::code);
    if (found != reasons.end()) return found->text;
  }
  return "la base de datos no pudo hacer la operación";
}

struct Phrase {
  std::string_view engine;
  std::string_view spanish;
};

// What a statement may be wrong about, as the engine begins to say it.
constexpr std::array phrases{
    Phrase{"no such table: ", "no existe la tabla "},
    Phrase{"no such column: ", "no existe la columna "},
    Phrase{"no such view: ", "no existe la vista "},
    Phrase{"no such index: ", "no existe el índice "},
    Phrase{"no such collation sequence: ", "falta la intercalación "},
    Phrase{"no such function: ", "no existe la función "},
};

std::string StatementReason(std::string_view message) {
  for (const Phrase& phrase : phrases) {
    if (message.starts_with(phrase.engine)) {
      return std::string(phrase.spanish) + std::string(message.substr(phrase.engine.size()));
    }
  }
  return "la instrucción no es válida («" + std::string(message) + "»)";
}

/// Spanish, with what only the engine knows: the column of a constraint, what is wrong with a statement, the words of
/// the store's own triggers.
std::string TextOf(int extendedCode, std::string_view message) {
  if (extendedCode == SQLITE_CONSTRAINT_TRIGGER) return std::string(message);
  if ((extendedCode & primaryMask) == SQLITE_ERROR) return StatementReason(message);
  std::string text(ReasonOf(extendedCode));
  const std::size_t colon = message.find(": ");
  const bool namesColumn = (extendedCode & primaryMask) == SQLITE_CONSTRAINT && colon != std::string_view::npos;
  return namesColumn ? text + " (" + std::string(message.substr(colon + 2)) + ")" : text;
}

bool FailedToRead(sqlite3_file* file) {
  int systemError = 0;
  if (file == nullptr || file->pMethods == nullptr) return false;
  if (file->pMethods->xFileControl(file, SQLITE_FCNTL_LAST_ERRNO, &systemError) != SQLITE_OK) return false;
  return systemError == EIO || systemError == ENXIO || systemError == ERANGE;
}

/// A statement that meets a page which the system refuses to read ends in SQLITE_CORRUPT, as one that meets a damaged
/// page does. Only the files, the database's and its log's, know that it was a failed read.
bool IsFailedRead(sqlite3* database, int extendedCode) {
  if ((extendedCode & primaryMask) != SQLITE_CORRUPT) return false;
  for (const int which : {SQLITE_FCNTL_FILE_POINTER, SQLITE_FCNTL_JOURNAL_POINTER}) {
    sqlite3_file* file = nullptr;
    if (sqlite3_file_control(database, "main", which, static_cast<void*>(&file)) != SQLITE_OK) continue;
    if (FailedToRead(file)) return true;
  }
  return false;
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

bool ConcernsTheFile(HostErrorKind kind) {
  switch (kind) {
    case HostErrorKind::Unreachable:
    case HostErrorKind::Busy:
    case HostErrorKind::Damaged:
    case HostErrorKind::Full:
    case HostErrorKind::Access:
      return true;
    default:
      return false;
  }
}

HostError MakeSqliteError(sqlite3* database, int code, std::string context) {
  if (database == nullptr) return {HostErrorKind::Failed, TextOf(code, ""), std::move(context), code};
  // A call may return the primary code only; what the connection keeps is finer, as long as it is the same failure.
  const int kept = sqlite3_extended_errcode(database);
  const bool same = (kept & primaryMask) == (code & primaryMask);
  const int reported = same ? kept : code;
  const int extendedCode = IsFailedRead(database, reported) ? SQLITE_IOERR_CORRUPTFS : reported;
  const char* const message = same ? sqlite3_errmsg(database) : "";
  const HostErrorKind kind = KindOfSqliteCode(extendedCode, sqlite3_system_errno(database));
  return {kind, TextOf(extendedCode, message), std::move(context), extendedCode};
}

}  // namespace tolvan
