#include "base/NumberText.h"

#include <gtest/gtest.h>

#include <limits>
#include <utility>
#include <vector>

namespace tolvan {
namespace {

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

}  // namespace
}  // namespace tolvan
