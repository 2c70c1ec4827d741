// The questions about items that reading, classifying and the template's export ask. Their texts are compared with the
// logs of other installations, so every blank stands as it always did.
#pragma once

#include <cstdint>
#include <string_view>

#include "base/Currency.h"
#include "host/DatabaseServices.h"
#include "import/AmountCell.h"
#include "import/StoreTables.h"

namespace tolvan {

/// All items with their principal unit in an inventory, and their price in a list, by department, brand and code.
SqlStatement AllItemsStatement(std::int32_t inventory, std::string_view list);

/// The same for one code and the list "DEF".
SqlStatement ItemStatement(std::string_view code, std::int32_t inventory);

SqlStatement CodeExistsStatement(std::string_view code);
SqlStatement PrincipalUnitStatement(std::string_view code);

/// A row of the first two, as far as prices are compared. Prices with tax are of the rate of the item's tax class.
struct ItemRecord {
  std::string code;
  std::string description;
  std::string brand;
  std::string department;
  std::optional<Currency> cost;  ///< nothing when none is stored, or an unusable one
  std::optional<Currency> net;   ///< the price without tax; nothing likewise
  std::optional<Currency>
      withTax;  ///< the price with it; nothing without a price, or when it is too large for an amount
  Rate rate;    ///< zero when the item is exempt
  bool costIsNull = false;
  Remarks unusable;  ///< of the stored amounts that are none, NULL apart

  /// Reads the current row.
  static ItemRecord Read(const Recordset& rows, const TaxTable& taxes);
};

}  // namespace tolvan
