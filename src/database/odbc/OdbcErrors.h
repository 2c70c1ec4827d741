// The one translator of ODBC's diagnostics.
#pragma once

#include <string>
#include <string_view>

#include "host/HostError.h"

namespace tolvan {

/// The kind for an SQLSTATE of five characters and the engine's own number (SQL Server's decide where its states are
/// too coarse).
HostErrorKind KindOfSqlState(std::string_view state, std::int64_t nativeCode);

/// What people read of a diagnostic: the state and a Spanish reason; the driver's `message` where the state alone does
/// not say what happened.
std::string OdbcText(std::string_view state, std::int64_t nativeCode, const std::string& message);

/// The first diagnostic of a handle of `type` that just failed, without a context. Its number is never 0.
HostError MakeOdbcError(short type, void* handle);

}  // namespace tolvan
