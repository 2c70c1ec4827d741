#include "ui/FieldTexts.h"

#include <gtest/gtest.h>

namespace tolvan {
namespace {

TEST(FieldTexts, ReadsDatesAsTheyAreTyped) {
  const Date expected = Date::FromParts(2024, 2, 29);
  for (const char* text : {"29/02/2024", " 29-2-24 ", "29.02.2024"}) EXPECT_EQ(ParseDateText(text), expected) << text;
  for (const char* text : {"", "29/02", "30/02/2024", "2024-02-29", "29/02/20244", "a/2/2024", "1/1/0150", "1//2024"}) {
    EXPECT_EQ(ParseDateText(text), std::nullopt) << text;
  }
  EXPECT_EQ(DateText(expected), "29/02/2024");
}

TEST(FieldTexts, ReadsTimesAsTheyAreTyped) {
  EXPECT_EQ(ParseTimeText("7.5"), (TimeOfDay{7, 5}));
  EXPECT_EQ(ParseTimeText(" 19"), (TimeOfDay{19, 0}));
  for (const char* text : {"", "24:00", "10:60", "1:2:3", "x", "-1:00", "123:00"}) {
    EXPECT_EQ(ParseTimeText(text), std::nullopt) << text;
  }
  EXPECT_EQ(TimeText({7, 5}), "07:05");
  EXPECT_EQ(Moved({0, 0}, -1), (TimeOfDay{23, 59}));
  EXPECT_EQ(Moved({23, 30}, 60), (TimeOfDay{0, 30}));
}

}  // namespace
}  // namespace tolvan
