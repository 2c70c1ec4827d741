// The small services that the spreadsheet provider takes, set by hand.
#pragma once

#include "host/Clock.h"
#include "host/Interruption.h"

namespace tolvan::test {

struct SetClock : Clock {
  DateTime Now() const override { return {.date = Date::FromParts(2024, 1, 31)}; }
};

struct SetInterruption : Interruption {
  bool Requested() const noexcept override { return requested; }
  bool requested = false;
};

}  // namespace tolvan::test
