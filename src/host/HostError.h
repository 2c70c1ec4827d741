// The one exception of the host's services. Providers translate every foreign failure into it; actions catch it at
// their public operation and show TextForPeople.
#pragma once

#include <cstdint>
#include <stdexcept>
#include <string>

namespace tolvan {

enum class HostErrorKind {
  Configuration,   ///< a setting of the host that cannot be used
  Unreachable,     ///< database, server or folder not there, or the connection to it died
  Busy,            ///< locked by another program longer than the agreed wait
  Damaged,         ///< the database or file is not what it should be
  Constraint,      ///< a key, check or foreign key refuses the row
  Statement,       ///< the database refuses the statement
  Full,            ///< no room left on the device
  Access,          ///< no right to read or write
  Timeout,         ///< no answer in time; a statement may still have run
  Interrupted,     ///< stopped at the user's request
  InvalidValue,    ///< a value that the service cannot take, such as a text with a NUL in SQL
  OutcomeUnknown,  ///< the connection failed while a transaction was being committed: it was kept whole, or not at all
  Failed,          ///< anything else
};

class HostError : public std::runtime_error {
 public:
  /// `detail` is the provider's own message, `context` what was being done (a statement, a path; may be empty),
  /// `nativeCode` the provider's number, 0 when it has none.
  HostError(HostErrorKind kind, const std::string& detail, std::string context = {}, std::int64_t nativeCode = 0)
      : std::runtime_error(detail), kind_(kind), context_(std::move(context)), nativeCode_(nativeCode) {}

  HostErrorKind Kind() const noexcept { return kind_; }
  const std::string& Context() const noexcept { return context_; }
  std::int64_t NativeCode() const noexcept { return nativeCode_; }

 private:
  HostErrorKind kind_;
  std::string context_;
  std::int64_t nativeCode_;
};

/// Spanish text for the user: what happened, what it happened to (of a long context its beginning), and the provider's
/// message and number.
std::string TextForPeople(const HostError& error);

}  // namespace tolvan
