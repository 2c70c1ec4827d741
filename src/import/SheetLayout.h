// What a kind of list looks like above its data, so that another list is known before anything of it is taken. The rule
// is described in docs/importacion.md.
#pragma once

#include <cstdint>
#include <span>
#include <stdexcept>
#include <string>
#include <string_view>

#include "host/SpreadsheetApplication.h"

namespace tolvan {

/// A name that a column's heading may have, upper case without accents. A column may have several, and two columns the
/// same.
struct ColumnHeading {
  std::uint32_t column;
  std::string_view name;
};

struct SheetLayout {
  std::string_view
      otherwise;           ///< what a workbook is when it is another list: "El libro no está hecho con la plantilla"
  std::uint32_t firstRow;  ///< of the data; the two rows above it hold the headings
  std::span<const ColumnHeading> headings;
  bool (*readsAsData)(const SheetRow& row);  ///< whether a row would be taken as data, wherever it stood
  bool namesItsColumns;                      ///< whether every such list has at least one of the headings
};

/// The workbook is not such a list; what() says why, Spanish, for people.
class WrongList : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

/// What stands above the columns that are read.
enum class HeadingKind { None, Foreign, Known };

/// Looks at a row above the data: Foreign are texts of which none is a heading of the list. Throws WrongList when the
/// row is clearly not the list's: it reads as data, or a column has the heading of another one.
HeadingKind CheckHeadingRow(const SheetLayout& layout, const SheetRow& row);

/// "la columna E (precio)".
std::string ColumnText(std::uint32_t column, std::string_view name);

}  // namespace tolvan
