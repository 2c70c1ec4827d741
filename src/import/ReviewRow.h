#pragma once

#include <cstdint>
#include <optional>
#include <string>

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
  std::string remarks{};                    ///< what of it is not taken into account, Spanish; may be empty

  /// Reason and remarks as one text.
  std::string AllRemarks() const {
    return reason.empty() || remarks.empty() ? reason + remarks : reason + "; " + remarks;
  }
};

}  // namespace tolvan
