// What applying an import does to one item. Every price here is net of tax.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>

#include "base/Currency.h"

namespace tolvan {

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

}  // namespace tolvan
