#pragma once

#include "host/SystemServices.h"

namespace tolvan {

/// A clock whose day is set by the program that makes it; the time of day goes on as on the clock below it.
class FixedDayClock final : public Clock {
 public:
  /// `timeOfDay` must outlive this clock.
  FixedDayClock(Date today, const Clock& timeOfDay) : today_(today), timeOfDay_(timeOfDay) {}

  DateTime Now() const override {
    DateTime now = timeOfDay_.Now();
    now.date = today_;
    return now;
  }

 private:
  Date today_;
  const Clock& timeOfDay_;
};

}  // namespace tolvan
