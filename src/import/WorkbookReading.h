// The rows of a list, the same for every importer: where they begin and end in a workbook, that the workbook is such a
// list at all, and which rows come again.
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <span>
#include <stdexcept>
#include <string>
#include <string_view>
#include <unordered_map>

#include "host/SpreadsheetApplication.h"
#include "host/UserInterface.h"

namespace tolvan {

/// A name that a column's heading may have, upper case without accents. A column may have several, and two columns the
/// same.
struct ColumnHeading {
  std::uint32_t column;
  std::string_view name;
};

/// What a kind of list looks like above its data, so that another list is known before anything of it is taken. The
/// rule is described in docs/importacion.md.
struct SheetLayout {
  std::string_view
      otherwise;           ///< what a workbook is when it is another list: "El libro no está hecho con la plantilla"
  std::uint32_t firstRow;  ///< of the data; the two rows above it hold the headings
  std::span<const ColumnHeading> headings;
  std::string (*whyEnds)(const SheetRow& row);  ///< why a row ends the data, Spanish; empty when it is data
  bool (*readsAsData)(const SheetRow& row);     ///< whether a row would be taken as data, wherever it stood
  bool namesItsColumns;                         ///< whether every such list has at least one of the headings
};

/// The workbook is not such a list; what() says why, Spanish, for people.
class WrongList : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

/// "la columna E (precio)".
std::string ColumnText(std::uint32_t column, std::string_view name);

using DataRowTaker = std::function<void(const SheetRow& row)>;

/// Where the data ended though the sheet holds more.
struct ReadingEnd {
  std::uint32_t row = 0;         ///< the row that ended the data, with or without data of its own; 0: nothing was left
  std::string why{};             ///< Spanish, such as "la fila está vacía"
  std::int32_t following = 0;    ///< rows with data after that row
  bool foreignHeadings = false;  ///< above the data stand other headings than every such list has

  bool Early() const { return row > 0; }
};

/// Looks at the headings and hands the data rows on to `take`, each announced on `status` as "Analizando fila n", up to
/// the one that ends them. A row without any cell does so too. What follows the end is only counted.
/// Throws HostError as the application's readers do, and WrongList.
ReadingEnd ReadDataRows(SpreadsheetApplication& application, std::string_view path, const SheetLayout& layout,
                        const Interruption& interruption, StatusDisplay& status, const DataRowTaker& take);

/// One rule for every list: of rows that mean the same, the first is processed and the others are not.
class RepeatedRows {
 public:
  /// The sheet row that had `key` before, in any casing; nothing when `sheetRow` is the first.
  std::optional<std::uint32_t> Earlier(std::string_view key, std::uint32_t sheetRow);

  /// Why a row is not processed, Spanish: `what` ("el código") stands in the row `earlier` already.
  static std::string Reason(std::string_view what, std::uint32_t earlier);

 private:
  std::unordered_map<std::string, std::uint32_t> first_;  // by the key in upper case
};

}  // namespace tolvan
