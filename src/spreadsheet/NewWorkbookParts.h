// The parts of a new workbook that are the same whatever its sheet holds.
#pragma once

#include <string>
#include <vector>

#include "base/Calendar.h"
#include "spreadsheet/NewZip.h"

namespace tolvan {

/// Where the two parts of the sheet go.
constexpr const char* worksheetPartName = "xl/worksheets/sheet1.xml";
constexpr const char* textsPartName = "xl/sharedStrings.xml";

/// The part that says when the workbook was made.
std::string PropertiesXml(Date created);

/// Every part but the two of the sheet; the table of contents comes first. `properties` must outlive the result.
std::vector<NewZipEntry> PartsAroundSheet(const std::string& properties);

}  // namespace tolvan
