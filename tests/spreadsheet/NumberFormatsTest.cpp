#include "spreadsheet/NumberFormats.h"

#include <gtest/gtest.h>

#include <utility>
#include <vector>

namespace tolvan {
namespace {

TEST(NumberFormats, TellsDatesFromNumbers) {
  const std::vector<std::pair<std::string_view, bool>> cases = {
      {"General", false},
      {"GENERAL", false},
      {"#,##0.00", false},
      {"0.00E+00", false},
      {"@", false},
      {"", false},
      {"\"días\" 0", false},
      {"0\\d", false},
      {"0_d*s", false},
      {"[Red]0.00;[Blue]-0.00", false},
      {"[$Bs.-200A] #,##0.00", false},
      {"[>=100]0;0", false},
      {"0;dd/mm/yyyy", false},
      {"\"sin fin", false},
      {"[sin fin", false},
      {"0\\", false},
      {"dd/mm/yyyy", true},
      {"D-MMM", true},
      {"[$-409]h:mm AM/PM;@", true},
      {"[hh]:mm", true},
      {"[ss].00", true},
      {"mm:ss.0", true},
      {"General\" a las \"hh", true},
  };
  for (const auto& [code, isDate] : cases) EXPECT_EQ(ShowsDate(code), isDate) << code;
}

}  // namespace
}  // namespace tolvan
