#include "import/SheetLayout.h"

#include <algorithm>
#include <array>
#include <utility>

#include "base/Text.h"

namespace tolvan {
namespace {

constexpr std::uint32_t headingRows = 2;

std::string Letter(std::uint32_t column) {
  return {static_cast<char>('A' + column - 1)};
}

/// As headings are compared: "  Código " is "CODIGO".
std::string HeadingName(const SheetCell& cell) {
  if (cell.kind != CellKind::Text) return {};
  std::string name = ToUpper(TrimBlanks(cell.text));
  using Letters = std::pair<std::string_view, std::string_view>;
  constexpr std::array<Letters, 5> letters{{{"Á", "A"}, {"É", "E"}, {"Í", "I"}, {"Ó", "O"}, {"Ú", "U"}}};
  for (const auto& [accented, plain] : letters) name = ReplaceAll(name, accented, plain);
  return name;
}

bool IsRead(const SheetLayout& layout, std::uint32_t column) {
  return std::any_of(layout.headings.begin(), layout.headings.end(),
                     [&](const ColumnHeading& heading) { return heading.column == column; });
}

/// The column whose heading a cell has though it stands in another; 0 when there is nothing against the cell.
std::uint32_t OtherColumn(const SheetLayout& layout, const SheetRow& row, const SheetCell& cell) {
  if (!IsRead(layout, cell.column)) return 0;
  const std::string name = HeadingName(cell);
  std::uint32_t other = 0;
  for (const ColumnHeading& heading : layout.headings) {
    if (heading.name != name) continue;
    // In its place, here or in the column where it belongs.
    if (HeadingName(row.At(heading.column)) == name) return 0;
    if (other == 0) other = heading.column;
  }
  return other;
}

HeadingKind KindOf(const SheetLayout& layout, const SheetCell& cell) {
  const std::string name = HeadingName(cell);
  if (name.empty() || !IsRead(layout, cell.column)) return HeadingKind::None;
  const bool known = std::any_of(layout.headings.begin(), layout.headings.end(),
                                 [&](const ColumnHeading& heading) { return heading.name == name; });
  return known ? HeadingKind::Known : HeadingKind::Foreign;
}

[[noreturn]] void Refuse(const SheetLayout& layout, const SheetRow& row, const std::string& why) {
  throw WrongList(std::string(layout.otherwise) + ": en la fila " + std::to_string(row.number) + " " + why + ".");
}

}  // namespace

std::string ColumnText(std::uint32_t column, std::string_view name) {
  return "la columna " + Letter(column) + " (" + std::string(name) + ")";
}

HeadingKind CheckHeadingRow(const SheetLayout& layout, const SheetRow& row) {
  if (row.number + headingRows < layout.firstRow) return HeadingKind::None;
  if (layout.readsAsData(row)) {
    Refuse(layout, row, "ya hay datos, que deben comenzar en la " + std::to_string(layout.firstRow));
  }
  HeadingKind kind = HeadingKind::None;
  for (const SheetCell& cell : row.cells) {
    kind = std::max(kind, KindOf(layout, cell));
    const std::uint32_t other = OtherColumn(layout, row, cell);
    if (other == 0) continue;
    Refuse(layout, row,
           "la columna " + Letter(cell.column) + " se titula «" + std::string(TrimBlanks(cell.text)) +
               "», que corresponde a la columna " + Letter(other));
  }
  return kind;
}

}  // namespace tolvan
