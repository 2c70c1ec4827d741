#include "host/SpreadsheetApplication.h"

#include <algorithm>

#include "base/NumberText.h"

namespace tolvan {

std::string SheetCell::AsText() const {
  switch (kind) {
    case CellKind::Number:
    case CellKind::Date:
      return PlainNumberText(number);
    case CellKind::Boolean:
      return number != 0 ? "True" : "False";
    case CellKind::Text:
    case CellKind::Error:
      return std::string(text);
    case CellKind::Empty:
      break;
  }
  return {};
}

std::string_view SheetCell::AsText(std::string& scratch) const {
  if (kind == CellKind::Text) return text;
  scratch = AsText();
  return scratch;
}

const SheetCell& SheetRow::At(std::uint32_t column) const {
  static const SheetCell none;
  if (column > 0 && column <= cells.size() && cells[column - 1].column == column) return cells[column - 1];
  const auto found = std::lower_bound(cells.begin(), cells.end(), column,
                                      [](const SheetCell& cell, std::uint32_t wanted) { return cell.column < wanted; });
  return found != cells.end() && found->column == column ? *found : none;
}

}  // namespace tolvan
