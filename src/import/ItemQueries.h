// The questions about items that reading, classifying and the template's export ask. Their texts are compared with the
// logs of other installations, so every blank stands as it always did.
#pragma once

#include <cstdint>
#include <string_view>

#include "base/Currency.h"
#include "host/DatabaseServices.h"
#include "services/TaxTable.h"

namespace tolvan {

/// All items with their principal unit in an inventory, and their price in a list, by department, brand and code.
SqlStatement AllItemsStatement(std::int32_t inventory, std::string_view list);

/// The same for one code and the list "DEF".
SqlStatement ItemStatement(std::string_view code, std::int32_t inventory);

SqlStatement CodeExistsStatement(std::string_view code);
SqlStatement PrincipalUnitStatement(std::string_view code);

/// A row of the first two, as far as prices are compared.
struct ItemRecord {
  std::string code;
  std::string description;
  std::string brand;
  std::string department;
  Currency cost;
  std::optional<Currency> net;  ///< the price without tax
  Rate rate;                    ///< of its tax class; zero when it is exempt

  /// Reads the current row. Throws HostError InvalidValue, with the item's code, for an amount that is none.
  static ItemRecord Read(const Recordset& rows, const TaxTable& taxes);

  /// Throws HostError InvalidValue when the price with tax is too large for an amount.
  std::optional<Currency> PriceWithTax() const;
};

}  // namespace tolvan
