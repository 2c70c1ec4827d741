#include "base/Calendar.h"

#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace tolvan {
namespace {

bool IsLeapYear(int year) {
  return year % 4 == 0 && (year % 100 != 0 || year % 400 == 0);
}

int DaysOf(int year, int month) {
  if (month == 2) return IsLeapYear(year) ? 29 : 28;
  return month == 4 || month == 6 || month == 9 || month == 11 ? 30 : 31;
}

TEST(Date, CountsDayByDayThroughFourCenturies) {
  Date date = Date::FromParts(1800, 1, 1);
  for (int year = 1800; year <= 2200; ++year) {
    for (int month = 1; month <= 12; ++month) {
      for (int day = 1; day <= DaysOf(year, month); ++day, date = date.PlusDays(1)) {
        ASSERT_EQ(date, Date::FromExactParts(year, month, day));
        ASSERT_EQ(date.Year(), year);
        ASSERT_EQ(date.Month(), month);
        ASSERT_EQ(date.Day(), day);
        ASSERT_EQ(Date::Parse(date.ToIsoText()), date);
      }
      ASSERT_FALSE(Date::FromExactParts(year, month, DaysOf(year, month) + 1));
    }
  }
}

TEST(Date, CarriesPartsThatAreOutOfRange) {
  struct Case {
    int year, month, day;
    std::string expected;
  };
  const std::vector<Case> cases = {{2024, 13, 1, "2025-01-01"},  {2024, 0, 15, "2023-12-15"},
                                   {2024, 3, 0, "2024-02-29"},   {2023, 2, 29, "2023-03-01"},
                                   {2024, -11, 1, "2023-01-01"}, {2024, -12, 1, "2022-12-01"},
                                   {2024, 25, 31, "2026-01-31"}, {2024, 1, -365, "2022-12-31"}};
  for (const Case& c : cases) EXPECT_EQ(Date::FromParts(c.year, c.month, c.day).ToIsoText(), c.expected);
}

TEST(DateTime, ReadsIsoTextAndNothingElse) {
  const std::vector<std::pair<std::string, std::string>> cases = {
      {"2024-01-31", "2024-01-31 00:00:00"},          {"2024-01-31 09:30:05", "2024-01-31 09:30:05"},
      {"2024-01-31T23:59", "2024-01-31 23:59:00"},    {"2024-02-29 00:00:00.9999999", "2024-02-29 00:00:00"},
      {"0001-01-01 00:00:00", "0001-01-01 00:00:00"},
  };
  for (const auto& [text, expected] : cases) {
    const std::optional<DateTime> read = DateTime::Parse(text);
    ASSERT_TRUE(read) << text;
    EXPECT_EQ(read->ToIsoText(), expected);
  }
  for (const char* const refused :
       {"", "2024-1-31", "2023-02-29", "2024-00-10", "2024/01/31", "+024-01-31", "2024-01-31 ", "2024-01-31 9:30:00",
        "2024-01-31 24:00:00", "2024-01-31 23:60:00", "2024-01-31 23:59:60", "2024-01-31 09:30:5",
        "2024-01-31 09:30x05", "2024-01-31 09:30:05.", "2024-01-31 09:30:05Z", "2024-01-31 09:30:05.5x"}) {
    EXPECT_FALSE(DateTime::Parse(refused)) << '"' << refused << '"';
  }
}

}  // namespace
}  // namespace tolvan
