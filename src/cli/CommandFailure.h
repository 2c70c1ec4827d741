#pragma once

#include <stdexcept>
#include <string>

namespace tolvan {

/// The exit codes of the command.
enum class ExitCode {
  Done = 0,
  Failed = 1,       ///< nothing was applied, or the message says what was
  Usage = 2,        ///< wrong usage
  Rejected = 3,     ///< done, but some input was rejected
  Unreachable = 4,  ///< the host's configuration or database
};

/// Ends an order. The text is for people; it may hold CR LF.
class CommandFailure : public std::runtime_error {
 public:
  CommandFailure(ExitCode code, const std::string& text) : std::runtime_error(text), code_(code) {}

  ExitCode Code() const noexcept { return code_; }

 private:
  ExitCode code_;
};

}  // namespace tolvan
