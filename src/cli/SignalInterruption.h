#pragma once

#include <iosfwd>
#include <string>

#include "host/UserInterface.h"

namespace tolvan {

/// The user's wish to stop, told by SIGINT (Ctrl-C), SIGTERM or SIGHUP (the terminal was closed). One object per
/// process: it installs the handlers. A second signal of the first two kinds ends the process at once, for a user who
/// does not want to wait.
class SignalInterruption : public Interruption {
 public:
  /// Waits are told to `messages`, which must outlive the object. `drawsThere`: an unfinished line may stand there,
  /// which is taken away.
  SignalInterruption(std::ostream& messages, bool drawsThere);
  bool Requested() const noexcept override;
  void WaitBegins(std::string_view text) const noexcept override;

 private:
  std::ostream& messages_;
  bool drawsThere_;
  mutable std::string lastWait_;  // many short waits for the same are told once
};

}  // namespace tolvan
