#include "host/DatabaseServices.h"

#include <gtest/gtest.h>

#include <limits>
#include <optional>
#include <string>
#include <vector>

namespace tolvan {
namespace {

constexpr auto none = std::nullopt;

TEST(FieldValue, IsReadAlikeInWhateverShapeTheDatabaseDeliversIt) {
  struct Case {
    FieldValue value;
    std::string text;
    std::optional<std::string> money;
    std::optional<std::int64_t> integer;
    std::optional<bool> boolean;
  };
  const DateTime moment{.date = Date::FromParts(2024, 1, 31), .hour = 9, .minute = 30};
  const std::vector<Case> cases = {
      {std::monostate(), "", none, none, none},
      {true, "True", "1.0000", 1, true},
      {false, "False", "0.0000", 0, false},
      {std::int64_t{-7}, "-7", "-7.0000", -7, true},
      {9.99995, "9.99995", "10.0000", 9, true},
      {100000.0, "100000", "100000.0000", 100000, true},  // shorter with an exponent, which nobody reads
      {-0.00001, "-0.00001", "0.0000", 0, true},
      {1e22, "10000000000000000000000", none, none, true},
      {DecimalText{"9007199254740993.50"}, "9007199254740993.50", none, 9007199254740993, true},
      {DecimalText{"9223372036854775807"}, "9223372036854775807", none, 9223372036854775807, true},
      {DecimalText{"0.50"}, "0.50", "0.5000", 0, true},
      {DecimalText{"-0.00"}, "-0.00", "0.0000", 0, false},
      {moment, "2024-01-31 09:30:00", none, none, none},
      {std::string("tRUE"), "tRUE", none, none, true},
      {std::string("12.7"), "12.7", "12.7000", 12, true},
      {std::string("1e3"), "1e3", "1000.0000", 1000, true},
      {std::string("1e30"), "1e30", none, none, true},
      {std::string("12x"), "12x", none, none, none},
      {std::string("12.x"), "12.x", none, none, none},
      {std::string("nan"), "nan", none, none, none},
      {std::string(), "", none, none, none},
  };
  for (const Case& c : cases) {
    EXPECT_EQ(TextOf(c.value), c.text);
    const std::optional<Currency> money = CurrencyOf(c.value);
    EXPECT_EQ(money ? std::optional(money->ToText()) : none, c.money) << c.text;
    EXPECT_EQ(IntegerOf(c.value), c.integer) << c.text;
    EXPECT_EQ(BooleanOf(c.value), c.boolean) << c.text;
  }
}

TEST(FieldValue, TheSmallestAndLargestNumbersHaveRoom) {
  EXPECT_EQ(TextOf(std::numeric_limits<double>::denorm_min()).size(), 326U);
  EXPECT_EQ(TextOf(std::numeric_limits<double>::lowest()).size(), 310U);
}

}  // namespace
}  // namespace tolvan
