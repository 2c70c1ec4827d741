#pragma once

#include "base/Calendar.h"

namespace tolvan {

/// The date and time that count as now, in the store's local time. Tests and the demo store set it.
class Clock {
 public:
  virtual ~Clock() = default;
  virtual DateTime Now() const = 0;
  Date Today() const { return Now().date; }
};

}  // namespace tolvan
