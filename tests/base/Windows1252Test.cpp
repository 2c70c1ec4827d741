#include "base/Windows1252.h"

#include <gtest/gtest.h>

#include <string>

#include "base/Text.h"

namespace tolvan {
namespace {

TEST(Windows1252, EveryByteMakesTheWayThereAndBack) {
  std::string bytes;
  for (int byte = 0; byte < 256; ++byte) bytes += static_cast<char>(byte);
  const std::string text = FromWindows1252(bytes);
  EXPECT_TRUE(IsValidUtf8(text));
  EXPECT_EQ(CountCharacters(text), 256U);
  EXPECT_EQ(ToWindows1252(text), bytes);
}

TEST(Windows1252, NamesTheCharactersOfThePublishedTable) {
  EXPECT_EQ(FromWindows1252("\x80\x8A\x8E\x99\x9F\xA0\xD1\xF1\xFF"), "€ŠŽ™Ÿ\u00A0Ññÿ");
  EXPECT_EQ(FromWindows1252("\x81\x8D\x8F\x90\x9D"), "\u0081\u008D\u008F\u0090\u009D");
}

TEST(Windows1252, ACharacterWithoutAByteIsRefusedOrReplaced) {
  // A control that a printable byte stands in the place of, a Greek letter, a wide character, a broken byte.
  for (const std::string& lost :
       {std::string("\u0080"), std::string("Ω"), std::string("\U0001F600"), std::string("\xC3")}) {
    EXPECT_EQ(ToWindows1252("a" + lost + "ñ"), std::nullopt);
    EXPECT_EQ(ToWindows1252("a" + lost + "ñ", '?'), "a?\xF1");
  }
}

}  // namespace
}  // namespace tolvan
