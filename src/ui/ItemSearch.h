// The host's search over items: a list of codes and descriptions that shrinks as the user types.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "base/Currency.h"
#include "host/DatabaseServices.h"

namespace tolvan {

struct FoundItem {
  std::string code;
  std::string description;
  std::optional<Currency> price{};  ///< with tax, of the list "DEF"; nothing when it is not known
};

class ItemSearch {
 public:
  /// Reads the items that `items` selects, a query for idItem, with their prices in that inventory. Throws HostError
  /// when the items cannot be read.
  ItemSearch(DatabaseServices& database, const SqlStatement& items, std::int32_t inventory);

  /// Keeps in the list what holds every word of `text` in its code or description; case and accents do not matter.
  /// Items whose code begins with the text stand first, else the order is that of codes.
  void Filter(std::string_view text);

  std::size_t Count() const { return shown_.size(); }

  /// `line` is below Count().
  const FoundItem& At(std::size_t line) const { return items_[shown_[line]]; }

 private:
  void ReadPrices(DatabaseServices& database, std::int32_t inventory);

  std::vector<FoundItem> items_;
  std::vector<std::string> keys_;  // of each item: code, blank, description, without case and accents
  std::vector<std::size_t> shown_;
};

}  // namespace tolvan
