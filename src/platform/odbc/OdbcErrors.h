// The one translator of ODBC's diagnostics.
#pragma once

#include <string_view>

#include "host/HostError.h"

namespace tolvan {

/// The kind for an SQLSTATE of five characters and the engine's own number (SQL Server's decide where its states are
/// too coarse).
HostErrorKind KindOfSqlState(std::string_view state, std::int64_t nativeCode);

/// The first diagnostic of a handle of `type` that just failed, without a context. Its number is never 0.
HostError MakeOdbcError(short type, void* handle);

}  // namespace tolvan
