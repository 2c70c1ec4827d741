#pragma once

#include "host/SystemServices.h"
#include "host/UserInterface.h"

namespace tolvan {

/// What a front brings into the host it assembles. Everything outlives the host.
struct HostFront {
  Dialogs& dialogs;
  Clock& clock;
  Interruption& interruption;
  bool userPresent = false;  ///< whether the dialogs reach a person who can answer
};

}  // namespace tolvan
