// The statements that applying an import is made of.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "host/SqlStatement.h"
#include "import/ItemChanges.h"

namespace tolvan {

/// A unit of an item in one inventory, which is where costs and prices lie.
struct ItemLayer {
  std::string_view item;
  std::string_view unit;
  std::int32_t inventory;
};

SqlStatement BrandStatement(std::string_view brand);
SqlStatement UnitsOfItemStatement(std::string_view item);  ///< idUnidad, EsPrincipal

/// A brand or department described by its own code.
SqlStatement InsertBrand(std::string_view brand);
SqlStatement InsertDepartment(std::string_view department);

SqlStatement InsertItem(const ItemCreation& item);

struct NewUnit {
  std::string_view item;
  std::string_view unit;
  bool principal = false;
  std::int32_t multiplier = 1;
  bool asksToDecompose = false;
};
SqlStatement InsertUnit(const NewUnit& unit);

/// The updates keep the present value as the former one.
SqlStatement InsertCost(const ItemLayer& layer, const ItemCost& cost);
SqlStatement UpdateCost(const ItemLayer& layer, const ItemCost& cost);
SqlStatement InsertPrice(const ItemLayer& layer, Currency net, bool fixed);
SqlStatement UpdatePrice(const ItemLayer& layer, Currency net, bool fixed);

SqlStatement ClearFingerprint(std::string_view fingerprint);
SqlStatement SetFingerprint(std::string_view item, std::string_view fingerprint);

}  // namespace tolvan
