#include "desktop/WindowTest.h"

#include <filesystem>

namespace tolvan::test {

int WindowTest::Run(const WindowDriver::Script& script) {
  const auto* const current = ::testing::UnitTest::GetInstance()->current_test_info();
  WindowDriver driver(std::filesystem::absolute("fallos") / current->name());
  const int code = driver.Run(places.host, script);
  EXPECT_EQ(driver.Failure(), "");
  return code;
}

void WindowTest::Choose(WindowDriver& driver, unsigned node, int element, const std::string& path) {
  driver.ClickLine("tvOpciones", node);
  const std::string title = element == 0 ? "Seleccionar Archivo de Excel" : "Seleccionar Archivo de Texto RNC";
  driver.ClickUntilPicker("BAbrirArchivo" + std::to_string(element), title);
  driver.AnswerPicker(title, path);
}

}  // namespace tolvan::test
