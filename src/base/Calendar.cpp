#include "base/Calendar.h"

#include <chrono>

#include "base/NumberText.h"

namespace tolvan {
namespace {

std::chrono::year_month_day Parts(std::int32_t days) {
  return std::chrono::year_month_day(std::chrono::sys_days(std::chrono::days(days)));
}

std::int32_t CountDays(std::chrono::year_month_day date) {
  return static_cast<std::int32_t>(std::chrono::sys_days(date).time_since_epoch().count());
}

/// Exactly `length` digits from `start`.
std::optional<int> Digits(std::string_view text, std::size_t start, std::size_t length) {
  if (text.size() < start + length) return std::nullopt;
  int value = 0;
  for (const char c : text.substr(start, length)) {
    if (c < '0' || c > '9') return std::nullopt;
    value = value * 10 + (c - '0');
  }
  return value;
}

/// A point and at least one digit.
bool IsFraction(std::string_view text) {
  return text.size() > 1 && text[0] == '.' && text.find_first_not_of("0123456789", 1) == std::string_view::npos;
}

}  // namespace

Date Date::FromParts(int year, int month, int day) {
  const int monthsFromZero = year * 12 + (month - 1);
  const int carriedYear = monthsFromZero >= 0 ? monthsFromZero / 12 : (monthsFromZero - 11) / 12;
  const int carriedMonth = monthsFromZero - carriedYear * 12 + 1;
  const std::chrono::year_month_day first(std::chrono::year(carriedYear),
                                          std::chrono::month(static_cast<unsigned>(carriedMonth)), std::chrono::day(1));
  return Date(CountDays(first)).PlusDays(day - 1);
}

std::optional<Date> Date::FromExactParts(int year, int month, int day) {
  if (month < 1 || month > 12 || day < 1 || day > 31) return std::nullopt;
  const std::chrono::year_month_day date(std::chrono::year(year), std::chrono::month(static_cast<unsigned>(month)),
                                         std::chrono::day(static_cast<unsigned>(day)));
  if (!date.ok()) return std::nullopt;
  return Date(CountDays(date));
}

std::optional<Date> Date::Parse(std::string_view isoText) {
  if (isoText.size() != 10 || isoText[4] != '-' || isoText[7] != '-') return std::nullopt;
  const auto year = Digits(isoText, 0, 4);
  const auto month = Digits(isoText, 5, 2);
  const auto day = Digits(isoText, 8, 2);
  if (!year || !month || !day) return std::nullopt;
  return FromExactParts(*year, *month, *day);
}

int Date::Year() const {
  return static_cast<int>(Parts(days_).year());
}
int Date::Month() const {
  return static_cast<int>(static_cast<unsigned>(Parts(days_).month()));
}
int Date::Day() const {
  return static_cast<int>(static_cast<unsigned>(Parts(days_).day()));
}

Date Date::PlusDays(int days) const {
  return Date(days_ + days);
}

std::string Date::ToIsoText() const {
  return PaddedNumber(Year(), 4) + '-' + PaddedNumber(Month(), 2) + '-' + PaddedNumber(Day(), 2);
}

std::optional<DateTime> DateTime::Parse(std::string_view isoText) {
  const auto date = Date::Parse(isoText.substr(0, 10));
  if (!date) return std::nullopt;
  DateTime result{.date = *date};
  if (isoText.size() == 10) return result;
  if (isoText.size() < 16 || (isoText[10] != ' ' && isoText[10] != 'T') || isoText[13] != ':') return std::nullopt;
  const auto hour = Digits(isoText, 11, 2);
  const auto minute = Digits(isoText, 14, 2);
  const auto second = isoText.size() == 16 ? std::optional<int>(0) : Digits(isoText, 17, 2);
  if (!hour || !minute || !second || *hour > 23 || *minute > 59 || *second > 59) return std::nullopt;
  if (isoText.size() > 16 && isoText[16] != ':') return std::nullopt;
  if (isoText.size() > 19 && !IsFraction(isoText.substr(19))) return std::nullopt;
  result.hour = *hour;
  result.minute = *minute;
  result.second = *second;
  return result;
}

std::string DateTime::ToIsoText(char separator) const {
  return date.ToIsoText() + separator + PaddedNumber(hour, 2) + ':' + PaddedNumber(minute, 2) + ':' +
         PaddedNumber(second, 2);
}

}  // namespace tolvan
