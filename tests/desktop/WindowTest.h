// A demo store of its own for every test, and the windows on it.
#pragma once

#include <filesystem>
#include <string>

#include "cli/DemoStoreFixture.h"
#include "desktop/WindowDriver.h"

namespace tolvan::test {

class WindowTest : public DemoStoreFixture {
 protected:
  /// Opens the window, runs the script once a window of the name `first` is there, and closes what is open. A script
  /// that fails is a failure of the test, with a picture of the screen in the folder `fallos` of the working folder.
  /// The program's exit code.
  int Run(const WindowDriver::Script& script, const std::string& first = "frmOpciones") {
    const auto* const current = ::testing::UnitTest::GetInstance()->current_test_info();
    WindowDriver driver(std::filesystem::absolute("fallos") / current->name());
    const int code = driver.Run(places.host, script, first);
    EXPECT_EQ(driver.Failure(), "");
    return code;
  }

  /// Chooses an action's node, then a file by the button of its panel.
  static void Choose(WindowDriver& driver, unsigned node, int element, const std::string& path) {
    driver.ClickLine("tvOpciones", node);
    const std::string title = element == 0 ? "Seleccionar Archivo de Excel" : "Seleccionar Archivo de Texto RNC";
    driver.ClickUntilPicker("BAbrirArchivo" + std::to_string(element), title);
    driver.AnswerPicker(title, path);
  }
};

namespace node {
inline constexpr unsigned dailySales = 0;
inline constexpr unsigned movilnet = 1;
inline constexpr unsigned collector = 2;
inline constexpr unsigned excel = 3;
inline constexpr unsigned registry = 4;
}  // namespace node

}  // namespace tolvan::test
