#pragma once

#include "host/Clock.h"
#include "host/Dialogs.h"
#include "host/Interruption.h"

namespace tolvan {

/// What a front brings into the host it assembles. Everything outlives the host.
struct HostFront {
  Dialogs& dialogs;
  Clock& clock;
  Interruption& interruption;
  bool userPresent = false;  ///< whether the dialogs reach a person who can answer
};

}  // namespace tolvan
