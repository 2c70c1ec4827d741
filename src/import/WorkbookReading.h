// The walk over the data rows of a workbook, the same for every importer.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

#include "host/SpreadsheetApplication.h"
#include "host/UserInterface.h"
#include "import/SheetLayout.h"

namespace tolvan {

/// Takes a data row and returns an empty text; or tells why the row ends the data, Spanish.
using DataRowTaker = std::function<std::string(const SheetRow& row)>;

/// Where the data ended though the sheet holds more.
struct ReadingEnd {
  std::uint32_t row = 0;  ///< the first row that was not taken, with or without data of its own; 0: nothing was left
  std::string why{};      ///< Spanish, such as "la fila está vacía"
  std::int32_t following = 0;    ///< rows with data behind that row
  bool foreignHeadings = false;  ///< above the data stand other headings than every such list has

  bool Early() const { return row > 0; }
};

/// Looks at the headings and hands the data rows on to `take`, each announced on `status` as "Analizando fila n", up to
/// the first that is not taken. A row without any cell ends the data too. What stands behind the end is counted only.
/// Throws HostError as the application's readers do, and WrongList.
ReadingEnd ReadDataRows(SpreadsheetApplication& application, std::string_view path, const SheetLayout& layout,
                        const Interruption& interruption, StatusDisplay& status, const DataRowTaker& take);

}  // namespace tolvan
