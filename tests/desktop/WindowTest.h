// A demo store of its own for every test, and the windows on it.
#pragma once

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "cli/demo/DemoStore.h"
#include "contract/TemporaryFolder.h"
#include "desktop/WindowDriver.h"
#include "host/SpreadsheetApplication.h"
#include "support/CommandRunner.h"

namespace tolvan::test {

class WindowTest : public ::testing::Test {
 protected:
  /// The store's last day of sales is 29 February 2024.
  WindowTest();

  /// Opens the window, runs the script and closes what is open. A script that fails is a failure of the test, with a
  /// picture of the screen in the folder `fallos` of the working folder. The program's exit code.
  int Run(const WindowDriver::Script& script);

  /// Chooses an action's node, then a file by the button of its panel.
  static void Choose(WindowDriver& driver, unsigned node, int element, const std::string& path);

  /// The values of the first rows, each behind a comma.
  std::string Query(const std::string& sql) const;

  /// A workbook with four rows that nobody reads and the given ones behind them.
  std::string Workbook(const std::string& name, const std::vector<std::vector<NewCell>>& rows);

  TemporaryFolder folder;
  DemoPlaces places;
  CommandRunner runner;
};

namespace node {
inline constexpr unsigned dailySales = 0;
inline constexpr unsigned movilnet = 1;
inline constexpr unsigned collector = 2;
inline constexpr unsigned excel = 3;
inline constexpr unsigned registry = 4;
}  // namespace node

}  // namespace tolvan::test
