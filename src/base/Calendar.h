// Calendar dates and times without a time zone, in the proleptic Gregorian calendar, as the host's databases store
// them.
#pragma once

#include <compare>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace tolvan {

class Date {
 public:
  /// 1970-01-01.
  constexpr Date() = default;

  /// Builds a date from its parts with carrying: month 13 is January of the next year, day 0 is the last day of the
  /// month before. Years from -32767 to 32767 before carrying.
  static Date FromParts(int year, int month, int day);

  /// The date of those exact parts; nothing when there is no such day.
  static std::optional<Date> FromExactParts(int year, int month, int day);

  /// "2024-01-31", four-two-two digits; nothing when the text is anything else.
  static std::optional<Date> Parse(std::string_view isoText);

  int Year() const;
  int Month() const;  ///< 1 to 12
  int Day() const;    ///< 1 to 31

  Date PlusDays(int days) const;

  /// "2024-01-31".
  std::string ToIsoText() const;

  auto operator<=>(const Date&) const = default;

 private:
  explicit constexpr Date(std::int32_t daysSinceEpoch) : days_(daysSinceEpoch) {}

  std::int32_t days_ = 0;
};

/// A date with a time of day in whole seconds.
struct DateTime {
  Date date;
  int hour = 0;    ///< 0 to 23
  int minute = 0;  ///< 0 to 59
  int second = 0;  ///< 0 to 59

  /// "2024-01-31 09:30:00", a "T" or a blank between the halves; the time may be missing (midnight), and fractions of a
  /// second are dropped. Nothing when the text is anything else.
  static std::optional<DateTime> Parse(std::string_view isoText);

  /// "2024-01-31 09:30:00" with the given separator between the halves.
  std::string ToIsoText(char separator = ' ') const;

  auto operator<=>(const DateTime&) const = default;
};

/// A time of the day without seconds, as settings and fields hold it.
struct TimeOfDay {
  int hour = 0;    ///< 0 to 23
  int minute = 0;  ///< 0 to 59

  bool operator==(const TimeOfDay&) const = default;
};

}  // namespace tolvan
