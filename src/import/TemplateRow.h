// One data row of a workbook in the product's own template, cleaned.
#pragma once

#include <cstdint>
#include <string>

#include "host/SpreadsheetApplication.h"
#include "import/CellValues.h"
#include "import/WorkbookReading.h"

namespace tolvan {

struct TemplateRow {
  std::uint32_t sheetRow = 0;  ///< in the worksheet, from 5
  std::string code{};          ///< at most 14 characters; empty only when `reason` is not
  std::string description{};
  std::string brand{};
  std::string department{};
  GivenAmount cost{};
  GivenAmount price{};  ///< tax included
  std::string unitCode{};
  std::int32_t multiplier = 0;
  GivenAmount alternatePrice{};  ///< column 10, tax included
  GivenAmount alternateCost{};   ///< column 11
  GivenAmount foreignCost{};     ///< column 13: the cost in foreign currency
  std::string reason{};          ///< why it cannot be processed, Spanish; empty when it can
  Remarks remarks{};             ///< of cells that are not taken into account, whatever the database holds
};

/// The template above its data.
extern const SheetLayout templateLayout;

TemplateRow ReadTemplateRow(const SheetRow& row);

}  // namespace tolvan
