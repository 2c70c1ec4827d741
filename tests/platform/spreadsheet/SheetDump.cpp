// Writes what the readers deliver of a workbook, a JSON list for each cell: row, column, kind, value. A failure goes to
// standard error as its kind's number and its text, with exit code 1. For the judges in check_workbooks.py.
#include <array>
#include <iostream>
#include <nlohmann/json.hpp>

#include "platform/files/PosixFileHelper.h"
#include "platform/spreadsheet/LocalSpreadsheetApplication.h"
#include "support/FakeHost.h"

namespace {

using namespace tolvan;
using nlohmann::json;

void Dump(const char* path) {
  constexpr std::array names{"empty", "text", "number", "date", "boolean", "error"};
  const test::FakeInterruption never;
  const test::FakeClock clock;
  PosixFileHelper files("/");
  LocalSpreadsheetApplication application(clock, files, "/tmp");
  const auto reader = application.OpenFirstWorksheet(path, never);
  for (SheetRow row; reader->NextRow(row);) {
    for (const SheetCell& cell : row.cells) {
      const bool isText = cell.kind == CellKind::Text || cell.kind == CellKind::Error;
      const json value = isText ? json(cell.text) : json(cell.number);
      std::cout << json{row.number, cell.column, names[static_cast<std::size_t>(cell.kind)], value} << '\n';
    }
  }
}

}  // namespace

int main(int count, char** arguments) {
  try {
    if (count != 2) return 2;
    Dump(arguments[1]);
    return 0;
  } catch (const HostError& error) {
    std::cerr << static_cast<int>(error.Kind()) << ' ' << error.what() << '\n';
    return 1;
  }
}
