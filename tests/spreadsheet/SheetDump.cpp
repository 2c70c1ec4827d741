// Writes what the readers deliver of a workbook, a JSON list for each cell: row, column, kind, value. A failure goes to
// standard error as its kind's number and its text, with exit code 1. With a second path the workbook is written anew
// there. For the judges in check_workbooks.py.
#include <array>
#include <iostream>
#include <nlohmann/json.hpp>
#include <vector>

#include "spreadsheet/LocalSpreadsheetApplication.h"
#include "support/FakeHost.h"
#include "system/posix/PosixFileHelper.h"

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

/// Writes the texts and numbers of a workbook into a new one.
void Copy(const char* from, const char* to) {
  const test::FakeInterruption never;
  const test::FakeClock clock;
  PosixFileHelper files("/");
  LocalSpreadsheetApplication application(clock, files, "/tmp");
  const auto workbook = application.CreateFromTemplate({}, 0);
  const auto reader = application.OpenFirstWorksheet(from, never);
  for (SheetRow row; reader->NextRow(row);) {
    std::vector<NewCell> cells(row.cells.back().column);
    for (const SheetCell& cell : row.cells) {
      if (cell.kind == CellKind::Text) cells[cell.column - 1] = cell.text;
      if (cell.kind == CellKind::Number) cells[cell.column - 1] = cell.number;
    }
    workbook->AppendRow(cells);
  }
  workbook->SaveAs(to);
}

}  // namespace

int main(int count, char** arguments) {
  try {
    if (count != 2 && count != 3) return 2;
    if (count == 2) Dump(arguments[1]);
    if (count == 3) Copy(arguments[1], arguments[2]);
    return 0;
  } catch (const HostError& error) {
    std::cerr << static_cast<int>(error.Kind()) << ' ' << error.what() << '\n';
    return 1;
  }
}
