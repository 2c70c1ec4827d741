#include "import/WorkbookReading.h"

#include <string>

namespace tolvan {
namespace {

void Announce(StatusDisplay& status, std::uint32_t row) {
  status.SetText("Analizando fila " + std::to_string(row));
}

}  // namespace

void ReadDataRows(SpreadsheetApplication& application, std::string_view path, std::uint32_t firstRow,
                  const Interruption& interruption, StatusDisplay& status, const DataRowTaker& take) {
  const auto reader = application.OpenFirstWorksheet(path, interruption);
  SheetRow row;
  std::uint32_t expected = firstRow;
  while (reader->NextRow(row)) {
    if (row.number < firstRow) continue;
    if (interruption.Requested()) throw HostError(HostErrorKind::Interrupted, "", std::string(path));
    Announce(status, expected);
    // Behind a gap nothing is read, even where rows hold data.
    if (row.number != expected || !take(row)) return;
    ++expected;
  }
}

}  // namespace tolvan
