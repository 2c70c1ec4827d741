#include "base/Calendar.h"

#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

namespace tolvan {
namespace {

TEST(Date, CountsDayByDayThroughFourCenturies) {
  Date date = Date::FromParts(1800, 1, 1);
  for (int day = 0; day < 400 * 365 + 97; ++day, date = date.PlusDays(1)) {
    ASSERT_EQ(Date::FromExactParts(date.Year(), date.Month(), date.Day()), date);
    ASSERT_EQ(Date::Parse(date.ToIsoText()), date);
  }
  EXPECT_EQ(date.ToIsoText(), "2200-01-01");
}

TEST(Date, CarriesPartsThatAreOutOfRange) {
  const std::vector<std::tuple<int, int, int, std::string>> cases = {
      {2024, 13, 1, "2025-01-01"},  {2024, 0, 15, "2023-12-15"},  {2024, 3, 0, "2024-02-29"},
      {2023, 2, 29, "2023-03-01"},  {2024, -11, 1, "2023-01-01"}, {2024, -12, 1, "2022-12-01"},
      {2024, 25, 31, "2026-01-31"}, {2024, 1, -365, "2022-12-31"}};
  for (const auto& [year, month, day, text] : cases) EXPECT_EQ(Date::FromParts(year, month, day).ToIsoText(), text);
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
