// The first part of an .xls, before its sheets: what kind of book it is, its tables, and where the sheets begin.
#pragma once

#include <cstdint>

#include "spreadsheet/BiffRecords.h"
#include "spreadsheet/NumberFormats.h"
#include "spreadsheet/SharedStrings.h"

namespace tolvan {

struct BiffWorkbook {
  SharedStrings strings;
  CellFormats formats;
  bool from1904 = false;
  std::uint64_t sheetPosition = 0;  ///< of the first worksheet in tab order
};

/// Reads from the beginning of the stream. Throws HostError Damaged for another version than BIFF8, a password, a book
/// without a worksheet.
void ReadBiffWorkbook(BiffRecords& records, BiffWorkbook& workbook);

}  // namespace tolvan
