#include "desktop/WindowTest.h"

#include <sqlite3.h>

#include <filesystem>

#include "platform/files/PosixFileHelper.h"
#include "platform/spreadsheet/LocalSpreadsheetApplication.h"

namespace tolvan::test {

WindowTest::WindowTest() : places(PlacesOfDemo(folder.File("tienda"))) {
  runner.Run({"demo", places.folder});
  runner.host = places.host;
}

int WindowTest::Run(const WindowDriver::Script& script) {
  const auto* const current = ::testing::UnitTest::GetInstance()->current_test_info();
  WindowDriver driver(std::filesystem::absolute("fallos") / current->name());
  const int code = driver.Run(places.host, script);
  EXPECT_EQ(driver.Failure(), "");
  return code;
}

void WindowTest::Choose(WindowDriver& driver, unsigned node, int element, const std::string& path) {
  driver.ClickLine("tvOpciones", node);
  driver.Click("BAbrirArchivo" + std::to_string(element));
  driver.AnswerPicker(element == 0 ? "Seleccionar Archivo de Excel" : "Seleccionar Archivo de Texto RNC", path);
}

std::string WindowTest::Query(const std::string& sql) const {
  sqlite3* handle = nullptr;
  EXPECT_EQ(sqlite3_open(places.database.c_str(), &handle), SQLITE_OK);
  std::string result;
  const auto take = [](void* out, int count, char** values, char**) {
    auto& line = *static_cast<std::string*>(out);
    for (int index = 0; index < count; ++index) line.append(values[index] ? values[index] : "NULL").append(",");
    return 0;
  };
  EXPECT_EQ(sqlite3_exec(handle, sql.c_str(), take, &result, nullptr), SQLITE_OK) << sqlite3_errmsg(handle);
  sqlite3_close(handle);
  return result;
}

std::string WindowTest::Workbook(const std::string& name, const std::vector<std::vector<NewCell>>& rows) {
  constexpr int headings = 4;
  PosixFileHelper files(folder.File(""));
  LocalSpreadsheetApplication application(runner.clock, files, folder.File("nuevos"));
  const auto workbook = application.CreateFromTemplate({}, 0);
  for (int row = 0; row < headings; ++row) workbook->AppendRow(std::vector<NewCell>{std::string_view("titulo")});
  for (const std::vector<NewCell>& row : rows) workbook->AppendRow(row);
  std::string path = folder.File(name);
  workbook->SaveAs(path);
  return path;
}

}  // namespace tolvan::test
