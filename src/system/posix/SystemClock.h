#pragma once

#include "host/SystemServices.h"

namespace tolvan {

/// The computer's clock in its own time zone.
class SystemClock final : public Clock {
 public:
  DateTime Now() const override;
};

}  // namespace tolvan
