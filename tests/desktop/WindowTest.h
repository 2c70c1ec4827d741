// A demo store of its own for every test, and the windows on it.
#pragma once

#include <string>

#include "cli/DemoStoreFixture.h"
#include "desktop/WindowDriver.h"

namespace tolvan::test {

class WindowTest : public DemoStoreFixture {
 protected:
  /// Opens the window, runs the script and closes what is open. A script that fails is a failure of the test, with a
  /// picture of the screen in the folder `fallos` of the working folder. The program's exit code.
  int Run(const WindowDriver::Script& script);

  /// Chooses an action's node, then a file by the button of its panel.
  static void Choose(WindowDriver& driver, unsigned node, int element, const std::string& path);
};

namespace node {
inline constexpr unsigned dailySales = 0;
inline constexpr unsigned movilnet = 1;
inline constexpr unsigned collector = 2;
inline constexpr unsigned excel = 3;
inline constexpr unsigned registry = 4;
}  // namespace node

}  // namespace tolvan::test
