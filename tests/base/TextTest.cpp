// Texts: their characters, their columns on a terminal and their bytes in the code page.
#include "base/Text.h"

#include <gtest/gtest.h>

#include <array>
#include <optional>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

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
      {"\xC3\xC3\xB1", 2}};     // a stray byte, then ñ
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
  // Text, what, with, exactly, ignoring case.
  const std::vector<std::array<const char*, 5>> cases = {
      {"aaa", "aa", "a", "aa", "aa"},
      {"abab", "ab", "abab", "abababab", "abababab"},
      {"xAx", "a", "", "xAx", "xx"},
      {"Ñoño ñO", "ñO", "-", "Ñoño -", "-- -"},
      {"%1 y %1", "%1", "Tolvan", "Tolvan y Tolvan", "Tolvan y Tolvan"},
      {"abc", "", "z", "abc", "abc"},
      {"ab", "abc", "z", "ab", "ab"},
      {"\xC3\x41", "a", "b", "\xC3\x41", "\xC3\x62"}};
  for (const auto& [text, what, with, exact, ignoringCase] : cases) {
    EXPECT_EQ(ReplaceAll(text, what, with), exact) << text;
    EXPECT_EQ(ReplaceAllIgnoringCase(text, what, with), ignoringCase) << text;
  }
}

TEST(Text, ComparesWithoutRegardToCase) {
  EXPECT_TRUE(EqualIgnoringCase("VEXLOR ñ", "vexlor Ñ"));
  EXPECT_FALSE(EqualIgnoringCase("vexlor", "vexlo"));
  EXPECT_FALSE(EqualIgnoringCase("vexlo", "vexlor"));
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

TEST(TextColumns, CutByWhatATerminalShows) {
  const std::vector<std::tuple<const char*, std::size_t, const char*, const char*>> cases = {
      {"", 0, "", ""},
      {"Ñu", 2, "Ñu", "Ñu"},
      {"añoso", 5, "año", "añ…"},
      {"n\u0303o", 2, "n\u0303o", "n\u0303o"},
      {"日本", 4, "日", "日…"},
      {"a\xFF", 2, "a\xFF", "a\xFF"},
  };
  for (const auto& [text, columns, firstThree, cutToThree] : cases) {
    EXPECT_EQ(CountColumns(text), columns) << text;
    EXPECT_EQ(FirstColumns(text, 3), firstThree);
    EXPECT_EQ(CutToColumns(text, 3), cutToThree);
  }
  EXPECT_EQ(CutToColumns("ab", 0), "");
}

TEST(TextColumns, WrapAtWords) {
  using Lines = std::vector<std::string>;
  const std::vector<std::pair<const char*, Lines>> cases = {
      {"", {""}},
      {"ocho año", {"ocho año"}},
      {"ocho años y  un día", {"ocho", "años y", "un día"}},
      {"a la primera", {"a la", "primera"}},
      {"desproporcionado es", {"despropo", "rcionado", "es"}},
      {"日本語 日本", {"日本語", "日本"}},
      {"uno\n  dos tres\n", {"uno", "  dos", "tres", ""}},
      {"        ", {"        "}},
      {"a        ", {"a"}},
  };
  for (const auto& [text, lines] : cases) EXPECT_EQ(WrapAtWords(text, 8), lines) << text;
  EXPECT_EQ(WrapAtWords("日a", 1), (Lines{"日", "a"}));
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
