#include "base/TextColumns.h"

#include <gtest/gtest.h>

namespace tolvan {
namespace {

TEST(TextColumns, CutByWhatATerminalShows) {
  const struct {
    const char* text;
    std::size_t columns;
    const char* firstThree;
    const char* cutToThree;
  } cases[] = {
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
  const struct {
    const char* text;
    Lines lines;
  } cases[] = {
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

}  // namespace
}  // namespace tolvan
