// The host's search over items: a list of codes and descriptions that shrinks as the user types.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "host/DatabaseServices.h"

namespace tolvan {

struct FoundItem {
  std::string code;
  std::string description;
};

class ItemSearch {
 public:
  /// Reads the items that `items` selects, a query for idItem. Throws HostError.
  ItemSearch(DatabaseServices& database, const SqlStatement& items);

  /// Keeps in the list what holds every word of `text` in its code or description; case and accents do not matter.
  /// Items whose code begins with the text stand first, else the order is that of codes.
  void Filter(std::string_view text);

  std::size_t Count() const { return shown_.size(); }

  /// `line` is below Count().
  const FoundItem& At(std::size_t line) const { return items_[shown_[line]]; }

 private:
  std::vector<FoundItem> items_;
  std::vector<std::string> keys_;  // of each item: code, blank, description, without case and accents
  std::vector<std::size_t> shown_;
};

}  // namespace tolvan
