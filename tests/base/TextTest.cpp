#include "base/Text.h"

#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "base/CsvText.h"

namespace tolvan {
namespace {

TEST(Text, ReadsEveryCharacterThatItWrites) {
  for (char32_t codePoint = 0; codePoint <= 0x10FFFF; ++codePoint) {
    if (codePoint == 0xD800) codePoint = 0xE000;  // surrogates are no characters
    std::string text;
    AppendCodePoint(text, codePoint);
    std::size_t position = 0;
    ASSERT_EQ(NextCodePoint(text, position), codePoint);
    ASSERT_EQ(position, text.size());
  }
  for (const char32_t noCharacter : {char32_t{0xD800}, char32_t{0xDFFF}, char32_t{0x110000}}) {
    std::string text;
    AppendCodePoint(text, noCharacter);
    EXPECT_EQ(text, "\uFFFD");
  }
}

TEST(Text, BytesThatAreNotUtf8CountOneEachAndPassThrough) {
  const std::vector<std::pair<std::string, std::size_t>> cases = {
      {"a\xFF\xFE", 3},  // never valid
      {"\x80z", 2},      // a continuation without its beginning
      {"ni\xC3", 3},     // cut in the middle of a character
      {"\xE2\x82", 2},
      {"\xF0\x9F\x98", 3},      // the same of longer ones
      {"\xC0\xAF", 2},          // written longer than it needs to be
      {"\xED\xA0\x80", 3},      // a surrogate
      {"\xF4\x90\x80\x80", 4},  // past the last character
      {"\xC3\xC3\xB1", 2},      // a stray byte, then ñ
  };
  for (const auto& [text, characters] : cases) {
    EXPECT_FALSE(IsValidUtf8(text));
    EXPECT_EQ(CountCharacters(text), characters);
    EXPECT_EQ(FirstCharacters(text, characters), text);
    EXPECT_EQ(ToLower(ToUpper(text)), text);
    EXPECT_EQ(ReplaceAllIgnoringCase(text, "?", "!"), text);
  }
  std::size_t position = 1;
  EXPECT_EQ(NextCodePoint("a\xFF", position), char32_t{0xDCFF});
  EXPECT_TRUE(IsValidUtf8("Ñandú €\U0001F600"));
}

TEST(Text, CutsByCharacters) {
  EXPECT_EQ(FirstCharacters("Ñandú", 0), "");
  EXPECT_EQ(FirstCharacters("Ñandú", 1), "Ñ");
  EXPECT_EQ(FirstCharacters("Ñandú", 4), "Ñand");
  EXPECT_EQ(FirstCharacters("Ñandú", 6), "Ñandú");
  EXPECT_EQ(CountCharacters("5 €\U0001F600"), 4U);
}

TEST(Text, ChangesCaseCharacterByCharacter) {
  EXPECT_EQ(ToUpper("año ágüé ç straße ÿ i"), "AÑO ÁGÜÉ Ç STRAßE Ÿ I");
  EXPECT_EQ(ToLower("AÑO ÁGÜÉ Ç [@] Σ"), "año ágüé ç [@] σ");
}

TEST(Text, TrimsBlanksOnly) {
  const std::vector<std::pair<std::string, std::string>> cases = {
      {"", ""}, {"   ", ""}, {"  a b ", "a b"}, {"\t a\t", "\t a\t"}, {" \r\n", "\r\n"}, {" \u00A0a ", "\u00A0a"}};
  for (const auto& [text, trimmed] : cases) EXPECT_EQ(TrimBlanks(text), trimmed);
}

TEST(Text, ReplacesLeftToRightWithoutLookingBack) {
  struct Case {
    std::string text, what, with, exact, ignoringCase;
  };
  const std::vector<Case> cases = {
      {"aaa", "aa", "a", "aa", "aa"},
      {"abab", "ab", "abab", "abababab", "abababab"},
      {"xAx", "a", "", "xAx", "xx"},
      {"Ñoño ñO", "ñO", "-", "Ñoño -", "-- -"},
      {"%1 y %1", "%1", "Tolvan", "Tolvan y Tolvan", "Tolvan y Tolvan"},
      {"abc", "", "z", "abc", "abc"},
      {"ab", "abc", "z", "ab", "ab"},
      {"\xC3"
       "A",
       "a", "b",
       "\xC3"
       "A",
       "\xC3"
       "b"},
  };
  for (const Case& c : cases) {
    EXPECT_EQ(ReplaceAll(c.text, c.what, c.with), c.exact) << c.text;
    EXPECT_EQ(ReplaceAllIgnoringCase(c.text, c.what, c.with), c.ignoringCase) << c.text;
  }
}

TEST(Text, ComparesWithoutRegardToCase) {
  EXPECT_TRUE(EqualIgnoringCase("VEXLOR ñ", "vexlor Ñ"));
  EXPECT_FALSE(EqualIgnoringCase("vexlor", "vexlo"));
  EXPECT_FALSE(EqualIgnoringCase("vexlo", "vexlor"));
  EXPECT_TRUE(EqualIgnoringCase("", ""));
  EXPECT_TRUE(ContainsIgnoringCase("Televisor LÉD", "éd"));
  EXPECT_TRUE(ContainsIgnoringCase("", ""));
  EXPECT_FALSE(ContainsIgnoringCase("LED", "LEDX"));
}

TEST(Text, SplitsAndReadsWholeNumbers) {
  using Pieces = std::vector<std::string_view>;
  EXPECT_EQ(Split("", '|'), Pieces{""});
  EXPECT_EQ(Split("|a||", '|'), (Pieces{"", "a", "", ""}));
  EXPECT_EQ(ParseInteger("0"), 0);
  EXPECT_EQ(ParseInteger("-2147483648"), -2147483647 - 1);
  EXPECT_EQ(ParseInteger("+7"), 7);
  EXPECT_EQ(ParseInteger("007"), 7);
  for (const char* const refused : {"", "2147483648", "+", "-", "+-1", "++1", " 1", "1.0"}) {
    EXPECT_EQ(ParseInteger(refused), std::nullopt) << '"' << refused << '"';
  }
}

TEST(CsvText, LeavesNothingForASpreadsheetToCalculate) {
  const std::vector<std::pair<std::string, std::string>> cases{{"=1+1", "'=1+1"},
                                                               {"+cmd|' /C calc'!A0", "'+cmd|' /C calc'!A0"},
                                                               {"-2", "'-2"},
                                                               {"@SUM(1)", "'@SUM(1)"},
                                                               {"\t=1", "'\t'=1"},
                                                               {"\r\n", "\"'\r\n\""},
                                                               {" \u00A0=1", "' \u00A0=1"},
                                                               {"＝1", "'＝1"},
                                                               {"A; =1;B", "A;' =1;B"},
                                                               {"A\n+1", "\"A\n'+1\""},
                                                               {"=HYPERLINK(\"x\",1)", "\"'=HYPERLINK(\"\"x\"\",1)\""},
                                                               {"TV-LED 1+1=2 a@b", "TV-LED 1+1=2 a@b"},
                                                               {"5, =1", "\"5, =1\""},
                                                               {"", ""}};
  for (const auto& [text, field] : cases) EXPECT_EQ(CsvText(text), field);
}

}  // namespace
}  // namespace tolvan
