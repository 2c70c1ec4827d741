// What comes through ODBC's interface as text: wide characters, which are UTF-16 units of two bytes on Windows and in
// unixODBC alike, though of different types (seen from here they are char16_t); and diagnostics, whose one translator
// this is.
#pragma once

#include <string>
#include <string_view>

#include "host/HostError.h"

namespace tolvan {

/// Bytes that are no UTF-8 become U+FFFD.
std::u16string WideText(std::string_view utf8);

/// A surrogate that stands alone becomes U+FFFD.
std::string NarrowText(std::u16string_view wide);

/// The kind for an SQLSTATE of five characters and the engine's own number (SQL Server's decide where its states are
/// too coarse).
HostErrorKind KindOfSqlState(std::string_view state, std::int64_t nativeCode);

/// What people read of a diagnostic: the state and a Spanish reason; the driver's `message` where the state alone does
/// not say what happened.
std::string OdbcText(std::string_view state, std::int64_t nativeCode, const std::string& message);

/// The first diagnostic of a handle of `type` that has just failed, without a context. Its number is never 0.
HostError MakeOdbcError(short type, void* handle);

}  // namespace tolvan
