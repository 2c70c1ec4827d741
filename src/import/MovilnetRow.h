// One line of the Movilnet price list, as read and with what is made of it.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "host/SheetRow.h"
#include "import/AmountCell.h"

namespace tolvan {

struct MovilnetRow {
  std::uint32_t sheetRow = 0;  ///< in the worksheet, from 4
  std::string code{};          ///< at most 12 characters; the user may give the row another one
  std::string description{};   ///< column A as read
  std::string brandCode{};     ///< column B normalised; empty when nothing is left of it
  std::string brand{};         ///< column B as read
  std::string department{};    ///< "CDMA", "GSM" or ""
  GivenAmount price{};         ///< column E, tax included
  GivenAmount cost{};          ///< column G
  std::string reason{};        ///< why it cannot be processed, Spanish; empty when it can
  /// What the user decided about the association: nothing, an item's code, or "" for none.
  std::optional<std::string> chosenItem{};
  bool codeChosen = false;  ///< `code` is the user's

  bool UserDecided() const { return chosenItem || codeChosen; }
};

inline constexpr std::uint32_t firstMovilnetRow = 4;

/// Nothing when the row is not accepted, which ends the data: one of the columns A, B, C, E and G is empty, or E or G
/// is not a number.
std::optional<MovilnetRow> ReadMovilnetRow(const SheetRow& row);

}  // namespace tolvan
