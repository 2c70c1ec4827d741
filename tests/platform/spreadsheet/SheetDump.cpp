// Writes what the readers deliver of a workbook, a JSON list for each cell: row, column, kind, value. A failure goes to
// standard error as its kind's number and its text, with exit code 1. For the judges in check_workbooks.py.
#include <array>
#include <charconv>
#include <cstdio>
#include <string>

#include "platform/files/PosixFileHelper.h"
#include "platform/spreadsheet/LocalSpreadsheetApplication.h"
#include "platform/spreadsheet/SheetFakes.h"

namespace {

using namespace tolvan;

std::string Quoted(std::string_view text) {
  std::string quoted = "\"";
  for (const char c : text) {
    const auto byte = static_cast<unsigned char>(c);
    std::array<char, 8> escape{};
    std::snprintf(escape.data(), escape.size(), "\\u%04x", byte);
    if (byte < 0x20 || c == '"' || c == '\\') {
      quoted.append(escape.data());
    } else {
      quoted.push_back(c);
    }
  }
  return quoted + "\"";
}

std::string ValueOf(const SheetCell& cell) {
  if (cell.kind == CellKind::Text || cell.kind == CellKind::Error) return Quoted(cell.text);
  std::array<char, 40> buffer{};
  return {buffer.data(), std::to_chars(buffer.data(), buffer.data() + buffer.size(), cell.number).ptr};
}

void Dump(const char* path) {
  constexpr std::array names{"empty", "text", "number", "date", "boolean", "error"};
  const test::SetInterruption never;
  const test::SetClock clock;
  PosixFileHelper files("/");
  LocalSpreadsheetApplication application(clock, files, "/tmp");
  const auto reader = application.OpenFirstWorksheet(path, never);
  for (SheetRow row; reader->NextRow(row);)
    for (const SheetCell& cell : row.cells)
      std::printf("[%u, %u, \"%s\", %s]\n", row.number, cell.column, names[static_cast<std::size_t>(cell.kind)],
                  ValueOf(cell).c_str());
}

}  // namespace

int main(int count, char** arguments) {
  try {
    if (count != 2) return 2;
    Dump(arguments[1]);
    return 0;
  } catch (const HostError& error) {
    std::fprintf(stderr, "%d %s\n", static_cast<int>(error.Kind()), error.what());
    return 1;
  }
}
