// The one translator of SQLite's result codes. People read a Spanish reason, never the engine's own words unless only
// it knows what is wrong: a statement, a column, the message of a trigger of the store's own.
#pragma once

#include <string>

#include "host/HostError.h"

struct sqlite3;

namespace tolvan {

/// The kind for an extended result code that is a failure. `systemError` is the errno that
/// caused it, 0 when there is none.
HostErrorKind KindOfSqliteCode(int extendedCode, int systemError);

/// Whether it is the file that failed, rather than one statement on it: then people must read which file.
bool ConcernsTheFile(HostErrorKind kind);

/// The error of the last call on `database`, which returned `code`. `database` may be null (no memory to open).
HostError MakeSqliteError(sqlite3* database, int code, std::string context);

}  // namespace tolvan
