// Everything that an import and the template's export ask of the host's tables of items and write to them: what one
// item becomes, the statements for it, and sending many of them in few round trips. The texts of the statements are
// compared with the logs of other installations, so every blank stands as it always did.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "base/Currency.h"
#include "host/DatabaseServices.h"
#include "import/CellValues.h"
#include "import/StoreTables.h"

namespace tolvan {

/// All items with their principal unit in an inventory, and their price in a list, by department, brand and code.
SqlStatement AllItemsStatement(std::int32_t inventory, std::string_view list);

/// The same for one code and the list "DEF".
SqlStatement ItemStatement(std::string_view code, std::int32_t inventory);

SqlStatement CodeExistsStatement(std::string_view code);
SqlStatement PrincipalUnitStatement(std::string_view code);
SqlStatement BrandStatement(std::string_view brand);
SqlStatement UnitsOfItemStatement(std::string_view item);  ///< idUnidad, EsPrincipal

/// The units of an item other than the principal one: idItem, idUnidad, Multiplicador.
SqlStatement OtherUnitsStatement(std::string_view code, std::string_view principalUnit);

/// Finds a row when the item is sold with serial numbers.
SqlStatement SerialsStatement(std::string_view code);

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

// What applying an import does to one item. Every price here is net of tax.

/// A cost in the store's currency and in the foreign one.
struct ItemCost {
  Currency cost;
  Currency foreign;
};

struct AlternateUnit {
  std::string unit;
  std::int32_t multiplier = 0;  ///< how many principal units it holds
  std::optional<Currency> net;  ///< nothing: its price is not written
  std::optional<ItemCost> cost;
};

struct ItemCreation {
  std::size_t row = 0;  ///< of the import, from 1
  std::string code{};
  std::string description{};
  std::string brand{};
  std::string department{};
  bool createsDepartment = false;  ///< unless an earlier row of the import has
  std::int64_t taxClass = 0;
  bool requiresSerials = false;
  ItemCost cost{};
  std::optional<Currency> net{};  ///< nothing: the item begins without a price
  bool fixedPrice = false;
  std::optional<std::string> fingerprint{};
  std::optional<AlternateUnit> alternate{};
};

struct ItemUpdate {
  std::size_t row = 0;
  std::string code{};
  std::optional<std::string> unit{};  ///< nothing: the item's principal unit
  std::optional<ItemCost> cost{};     ///< nothing: the costs stay
  std::optional<Currency> net{};      ///< nothing: the prices stay
  bool fixedPrice = false;            ///< the price is marked as fixed; false leaves the mark
  std::optional<std::string> fingerprint{};
  std::optional<AlternateUnit> alternate{};
};

using ItemChange = std::variant<ItemCreation, ItemUpdate>;

/// A unit of an item in one inventory, which is where costs and prices lie.
struct ItemLayer {
  std::string_view item;
  std::string_view unit;
  std::int32_t inventory;
};

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

/// How many rows of a workbook are looked up together. With at most four round trips for a block a distant server sees
/// few of them, and memory stays small.
inline constexpr std::size_t rowsPerBlock = 500;

/// The failure of one statement of a batch, with its place in it.
class BatchFailure : public HostError {
 public:
  BatchFailure(const HostError& error, std::size_t index) : HostError(error), index_(index) {}
  std::size_t Index() const noexcept { return index_; }

 private:
  std::size_t index_;
};

/// RunBatch; throws BatchFailure for the first statement that failed. An empty batch runs nothing.
std::vector<BatchResult> RunWhole(DatabaseServices& database, std::span<const SqlStatement> statements);

/// Whether the query of a batch found anything.
inline bool FoundRows(const BatchResult& result) {
  return !result.rows->AtEnd();
}

}  // namespace tolvan
