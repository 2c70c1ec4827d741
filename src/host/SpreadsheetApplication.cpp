#include "host/SpreadsheetApplication.h"

#include <algorithm>

#include "base/NumberText.h"
#include "base/Text.h"

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

bool FitsCell(std::string_view text) {
  constexpr std::size_t mostUnits = 32'767;
  if (text.size() <= mostUnits) return true;
  std::size_t units = 0;
  for (std::size_t at = 0; at < text.size();) units += NextCodePoint(text, at) > 0xFFFF ? 2U : 1U;
  return units <= mostUnits;
}

}  // namespace tolvan
