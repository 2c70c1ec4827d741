#include "system/posix/SystemClock.h"

#include <algorithm>
#include <ctime>

namespace tolvan {

DateTime SystemClock::Now() const {
  const std::time_t now = std::time(nullptr);
  std::tm local{};
  ::localtime_r(&now, &local);
  constexpr int tmYearBase = 1900;
  constexpr int lastSecond = 59;  // a leap second counts as the one before
  return {Date::FromParts(local.tm_year + tmYearBase, local.tm_mon + 1, local.tm_mday), local.tm_hour, local.tm_min,
          std::min(local.tm_sec, lastSecond)};
}

}  // namespace tolvan
