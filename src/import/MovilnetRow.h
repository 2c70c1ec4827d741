// One line of the Movilnet price list, as read and with what is made of it.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "host/SpreadsheetApplication.h"
#include "import/AmountCell.h"
#include "import/SheetLayout.h"

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

/// The list above its data.
extern const SheetLayout movilnetLayout;

/// Why the row is not accepted, which ends the data, Spanish: one of the columns A, B, C, E and G is empty, or E or G
/// is not a number. Empty when it is accepted.
std::string WhyMovilnetEnds(const SheetRow& row);

/// `row` is one that is accepted.
MovilnetRow ReadMovilnetRow(const SheetRow& row);

}  // namespace tolvan
