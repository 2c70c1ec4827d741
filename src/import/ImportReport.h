// What an import did, row by row, for labels to be reprinted and suppliers to be answered. The columns are described in
// docs/importacion.md.
#pragma once

#include <string>
#include <string_view>

#include "host/FileHelper.h"
#include "import/PriceImporter.h"

namespace tolvan {

/// A text as a field between the commas of a .csv report: quoted where it needs to be, and with an apostrophe before
/// everything that a spreadsheet would calculate in place of showing it (see docs/formats.md). Numbers and dates of the
/// component's own do not pass here: a negative amount stays a number.
std::string CsvText(std::string_view text);

/// Whether a report can be written under a name: it ends in ".csv" or ".xlsx", in any casing.
bool IsReportPath(std::string_view path);

/// Writes the report of an import that was applied, or would be, whole or not at all. The rows that changed something
/// come first, then those that were not processed. Throws HostError.
void WriteImportReport(const PriceImporter& importer, FileHelper& files, SpreadsheetApplication& spreadsheets,
                       std::string_view path);

}  // namespace tolvan
