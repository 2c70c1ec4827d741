#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "base/Currency.h"
#include "import/RowAction.h"

namespace tolvan {

/// A row of an import as review, report and command show it, whatever workbook it comes from. Prices include tax.
struct ReviewRow {
  std::int32_t number = 0;     ///< of the rows read, from 1
  std::uint32_t sheetRow = 0;  ///< in the worksheet
  std::string code{};
  std::string description{};
  std::string brand{};
  std::string department{};
  std::optional<Currency> cost{};   ///< nothing: not given
  std::optional<Currency> price{};  ///< nothing: not given
  RowAction action = RowAction::None;
  std::string associated{};  ///< the item that is updated; empty for a new one
  bool codeFree = false;     ///< no item has the row's code
  bool costChanged = false;
  bool priceChanged = false;
  Currency difference{};
  std::optional<Currency> previousCost{};   ///< nothing: there is none
  std::optional<Currency> previousPrice{};  ///< nothing: there is none
  std::string reason{};                     ///< why it is not processed, Spanish; empty when it is
  std::vector<std::string> remarks{};       ///< what of it is not taken into account, Spanish

  /// Reason and remarks as one text, "; " between.
  std::string AllRemarks() const {
    std::string all = reason;
    for (const std::string& remark : remarks) all += (all.empty() ? "" : "; ") + remark;
    return all;
  }
};

}  // namespace tolvan
