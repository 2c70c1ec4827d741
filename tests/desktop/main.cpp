#include <gtest/gtest.h>

#include "desktop/Toolkit.h"

int main(int count, char** arguments) {
  ::testing::InitGoogleTest(&count, arguments);
  return tolvan::test::RunWithToolkit(1, arguments, [] { return RUN_ALL_TESTS(); });
}
