// The walk over the data rows of a workbook, the same for every importer.
#pragma once

#include <cstdint>
#include <functional>
#include <string_view>

#include "host/SpreadsheetApplication.h"
#include "host/StatusDisplay.h"

namespace tolvan {

/// Takes a data row; false when the row ends the data.
using DataRowTaker = std::function<bool(const SheetRow& row)>;

/// Hands the rows from `firstRow` on to `take`, each announced on `status` as "Analizando fila n". A row
/// without any cell ends the data too. Throws HostError as the application's readers do.
void ReadDataRows(SpreadsheetApplication& application, std::string_view path, std::uint32_t firstRow,
                  const Interruption& interruption, StatusDisplay& status, const DataRowTaker& take);

}  // namespace tolvan
