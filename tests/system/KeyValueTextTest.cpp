#include "system/ValueFile.h"

#include <gtest/gtest.h>

namespace tolvan {
namespace {

TEST(KeyValueText, KeepsEveryValue) {
  const NamedValues values{{{"IMPEXP", "6"}, "C:\\Ventas\\"},
                           {{"IMPEXP", "9"}, ""},
                           {{"a/b=c\n", "\\x41"}, " = ; línea 1\r\nfin 2\n"},
                           {{"", "ñ"}, std::string("\0\x7F\xFF\xC3", 4)}};
  const std::string text = WriteKeyValueText(values);
  EXPECT_EQ(ParseKeyValueText(text), values);
  EXPECT_EQ(WriteKeyValueText({{{"IMPEXP", "6"}, "C:\\ñ\n"}}), "tolvan-valores 1\nIMPEXP/6=C:\\\\ñ\\x0A\nfin 1\n");
  for (std::size_t length = 0; length < text.size(); ++length) {
    EXPECT_FALSE(ParseKeyValueText(text.substr(0, length))) << "cut at " << length;
  }
}

TEST(KeyValueText, RefusesWhatIsDamaged) {
  const char* const damaged[] = {
      "",
      "\n",
      "fin 0\n",
      "tolvan-valores 1\nfin 1\n",
      "tolvan-valores 2\nfin 0\n",
      "tolvan-valores 1\r\nfin 0\r\n",
      "\xEF\xBB\xBFtolvan-valores 1\nfin 0\n",
      "tolvan-valores 1\nfin 0\n\n",
      "tolvan-valores 1\na/1=x\n\nfin 1\n",
      "tolvan-valores 1\na/1=x\na/1=x\nfin 2\n",
      "tolvan-valores 1\na/1=x\na/1=x\nfin 1\n",
      "tolvan-valores 1\na1=x\nfin 1\n",
      "tolvan-valores 1\na/1\nfin 1\n",
      "tolvan-valores 1\na/1=\\n\nfin 1\n",
      "tolvan-valores 1\na/1=\\x0\nfin 1\n",
      "tolvan-valores 1\na/1=\\x0g\nfin 1\n",
      "tolvan-valores 1\na/1=\t\nfin 1\n",
      "tolvan-valores 1\na/1=\xFF\nfin 1\n",
      "tolvan-valores 1\na/1=x\nfin 01\n",
  };
  for (const char* text : damaged) EXPECT_FALSE(ParseKeyValueText(text)) << text;
  EXPECT_TRUE(ParseKeyValueText("tolvan-valores 1\nb/1=\na/2==/\nfin 2\n"));
}

}  // namespace
}  // namespace tolvan
