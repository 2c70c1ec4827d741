// The one translator of SQLite's result codes.
#pragma once

#include <string>

#include "host/HostError.h"

struct sqlite3;

namespace tolvan {

/// The kind for an extended result code that is a failure. `systemError` is the errno behind it, 0 when there is none.
HostErrorKind KindOfSqliteCode(int extendedCode, int systemError);

/// The error of the last call on `database`, which returned `code`. `database` may be null (no memory to open).
HostError MakeSqliteError(sqlite3* database, int code, std::string context);

}  // namespace tolvan
