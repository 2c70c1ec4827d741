#include "base/Currency.h"

#include <gtest/gtest.h>

namespace tolvan {
TEST(Currency, Placeholder) {
  EXPECT_EQ(Currency::FromUnits(2).ToText(), "2.0000");
}
}  // namespace tolvan
