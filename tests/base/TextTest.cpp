// Texts, and the numbers, addresses and bytes that are read from them and written as them.
#include "base/Text.h"

#include <gtest/gtest.h>

#include <limits>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "base/EmailAddress.h"
#include "base/NumberText.h"
#include "base/Windows1252.h"

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
  EXPECT_EQ(ToUpper("año àgüé þ ÷ straße ÿ i"), "AÑO ÀGÜÉ Þ ÷ STRAßE Ÿ I");
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
  const std::vector<Case> cases = {{"aaa", "aa", "a", "aa", "aa"},
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
                                    "b"}};
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
                                                               {"\r", "\"'\r\""},
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

TEST(PlainNumberText, IsWhatAPersonWouldHaveTyped) {
  const std::vector<std::pair<double, std::string>> cases = {
      {0.1 + 0.2, "0.3"},
      {-0.0, "0"},
      {1e20, "100000000000000000000"},
      {-1234.5, "-1234.5"},
      {1e-7, "0.0000001"},
      {1.25e-3, "0.00125"},
      {123'456'789'012'345.0, "123456789012345"},
      {1'234'567'890'123'456.0, "1234567890123460"},
      {0.999'999'999'999'999'9, "1"},
      {8'290'001'234'567.0, "8290001234567"},
      {std::numeric_limits<double>::infinity(), ""},
      {std::numeric_limits<double>::quiet_NaN(), ""},
  };
  for (const auto& [value, expected] : cases) EXPECT_EQ(PlainNumberText(value), expected) << value;
}

TEST(EmailAddress, TakesPlausibleOnesOnly) {
  for (const char* good :
       {"ana@example.com", "a.b+c_d-e@sub.example.co", "x@1.do", "root@localhost", "ñ@compañía.do"}) {
    EXPECT_TRUE(IsEmailAddress(good)) << good;
  }
  for (const char* bad : {"",
                          "ana",
                          "@example.com",
                          "ana@",
                          "ana@example",
                          "ana@@example.com",
                          "a@b@example.com",
                          ".a@example.com",
                          "a.@example.com",
                          "a..b@example.com",
                          "a@-b.com",
                          "a@b-.com",
                          "a@.com",
                          "a@b.com.",
                          "a b@c.com",
                          " a@b.com",
                          "a@b.com ",
                          "a\t@b.com",
                          "a@b.com\r\nBcc: c@d.com",
                          "<a@b.com>",
                          "\"a\"@b.com",
                          "a,b@c.com",
                          "a@b_c.com",
                          "a\xC2\xA0@b.com",
                          "\xFF@b.com"}) {
    EXPECT_FALSE(IsEmailAddress(bad)) << bad;
  }
  const std::string label(60, 'd');
  const std::string domain = label + "." + label + "." + label + ".com";  // 186 characters
  EXPECT_TRUE(IsEmailAddress(std::string(64, 'a') + "@" + domain));
  EXPECT_FALSE(IsEmailAddress(std::string(65, 'a') + "@" + domain));
  EXPECT_FALSE(IsEmailAddress(std::string(60, 'a') + "@" + label + "." + domain));
}

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
    EXPECT_EQ(FirstBeyondWindows1252("€ñ" + lost + "Ω"), lost);
    EXPECT_EQ(ToWindows1252("a" + lost + "ñ", '?'), "a?\xF1");
  }
  EXPECT_EQ(FirstBeyondWindows1252("€ñ"), "");
}

}  // namespace
}  // namespace tolvan
