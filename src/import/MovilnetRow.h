// One line of the Movilnet price list, as read and with what is made of it: an item's code, its department, and the
// fingerprint by which the item is found again.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "host/SystemServices.h"
#include "import/CellValues.h"
#include "import/WorkbookReading.h"

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

/// `row` is one that is accepted.
MovilnetRow ReadMovilnetRow(const SheetRow& row);

/// The code, at most 12 characters, never empty: kind letter, brand prefix, and what of the model is neither brand nor
/// a common word. `model`, `brand` and `type` are columns A, B and C as read.
std::string MovilnetCode(std::string_view model, std::string_view brand, std::string_view type);

/// "CDMA", "GSM" (also for UMTS; it wins over CDMA), or "" when the type names none of them.
std::string MovilnetDepartment(std::string_view type);

/// The lower-case hexadecimal MD5 of brand and description, joined and in upper case, in the bytes of Windows-1252.
/// Characters that the code page lacks are kept apart by an escape; the rule is in docs/importacion.md.
std::string OriginFingerprint(const HashService& hashes, std::string_view brand, std::string_view description);

}  // namespace tolvan
