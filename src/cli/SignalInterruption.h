#pragma once

#include "host/Interruption.h"

namespace tolvan {

/// The user's wish to stop, told by SIGINT (Ctrl-C) or SIGTERM. One object per process: it installs the handlers. A
/// second signal of the kind ends the process at once, for a user who does not want to wait.
class SignalInterruption : public Interruption {
 public:
  SignalInterruption();
  bool Requested() const noexcept override;
};

}  // namespace tolvan
