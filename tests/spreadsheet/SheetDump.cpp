// Writes what the readers deliver of a workbook, a JSON list for each cell: row, column, kind, value. A failure goes to
// standard error as its kind's number and its text, with exit code 1. With a second path the texts and numbers are
// written into a new workbook there instead. For the judges in check_workbooks.py.
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

void Dump(const SheetRow& row) {
  constexpr std::array names{"empty", "text", "number", "date", "boolean", "error"};
  for (const SheetCell& cell : row.cells) {
    const bool isText = cell.kind == CellKind::Text || cell.kind == CellKind::Error;
    const json value = isText ? json(cell.text) : json(cell.number);
    std::cout << json{row.number, cell.column, names[static_cast<std::size_t>(cell.kind)], value} << '\n';
  }
}

void Copy(const SheetRow& row, NewWorkbook& workbook) {
  std::vector<NewCell> cells(row.cells.back().column);
  for (const SheetCell& cell : row.cells) {
    if (cell.kind == CellKind::Text) cells[cell.column - 1] = cell.text;
    if (cell.kind == CellKind::Number) cells[cell.column - 1] = cell.number;
  }
  workbook.AppendRow(cells);
}

}  // namespace

int main(int count, char** arguments) {
  try {
    const test::FakeInterruption never;
    const test::FakeClock clock;
    PosixFileHelper files("/");
    LocalSpreadsheetApplication application(clock, files, "/tmp");
    const auto workbook = application.CreateFromTemplate({}, 0);
    const auto reader = application.OpenFirstWorksheet(arguments[1], never);
    for (SheetRow row; reader->NextRow(row);) count == 2 ? Dump(row) : Copy(row, *workbook);
    if (count == 3) workbook->SaveAs(arguments[2]);
    return 0;
  } catch (const HostError& error) {
    std::cerr << static_cast<int>(error.Kind()) << ' ' << error.what() << '\n';
    return 1;
  }
}
