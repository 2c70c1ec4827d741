#include "import/WorkbookReading.h"

#include <algorithm>
#include <array>
#include <utility>

#include "base/Text.h"

namespace tolvan {
namespace {

constexpr std::uint32_t headingRows = 2;

/// What stands above the columns that are read.
enum class HeadingKind { None, Foreign, Known };

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

/// Looks at a row above the data: Foreign are texts of which none is a heading of the list. Throws WrongList when the
/// row is clearly not the list's: it reads as data, or a column has the heading of another one.
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

/// Whether a person would see anything in the row.
bool HoldsData(const SheetRow& row) {
  return std::any_of(row.cells.begin(), row.cells.end(), [](const SheetCell& cell) {
    return cell.kind != CellKind::Text || !TrimBlanks(cell.text).empty();
  });
}

class DataRows {
 public:
  DataRows(const SheetLayout& layout, StatusDisplay& status, const DataRowTaker& take)
      : layout_(layout), next_(layout.firstRow), status_(status), take_(take) {}

  void Add(const SheetRow& row) {
    if (end_.Early()) {
      if (HoldsData(row)) ++end_.following;
      return;
    }
    status_.SetText("Analizando fila " + std::to_string(next_));
    // After a gap nothing is read, even where rows hold data.
    const bool isGap = row.number != next_;
    end_.why = isGap ? "la fila está vacía" : layout_.whyEnds(row);
    if (end_.why.empty()) {
      take_(row);
      ++next_;
      return;
    }
    end_.row = next_;
    leftData_ = !isGap && HoldsData(row);
    if (isGap && HoldsData(row)) ++end_.following;
  }

  ReadingEnd End() const { return leftData_ || end_.following > 0 ? end_ : ReadingEnd(); }

 private:
  const SheetLayout& layout_;
  std::uint32_t next_;
  StatusDisplay& status_;
  const DataRowTaker& take_;
  ReadingEnd end_;
  bool leftData_ = false;  // in the row that ended the data
};

}  // namespace

std::string ColumnText(std::uint32_t column, std::string_view name) {
  return "la columna " + Letter(column) + " (" + std::string(name) + ")";
}

ReadingEnd ReadDataRows(SpreadsheetApplication& application, std::string_view path, const SheetLayout& layout,
                        const Interruption& interruption, StatusDisplay& status, const DataRowTaker& take) {
  const auto reader = application.OpenFirstWorksheet(path, interruption);
  DataRows rows(layout, status, take);
  HeadingKind headings = HeadingKind::None;
  for (SheetRow row; reader->NextRow(row);) {
    if (interruption.Requested()) throw HostError(HostErrorKind::Interrupted, "", std::string(path));
    if (row.number < layout.firstRow) {
      headings = std::max(headings, CheckHeadingRow(layout, row));
    } else {
      rows.Add(row);
    }
  }
  ReadingEnd end = rows.End();
  end.foreignHeadings = layout.namesItsColumns && headings == HeadingKind::Foreign;
  return end;
}

std::optional<std::uint32_t> RepeatedRows::Earlier(std::string_view key, std::uint32_t sheetRow) {
  const auto [first, isNew] = first_.emplace(ToUpper(key), sheetRow);
  return isNew ? std::nullopt : std::optional(first->second);
}

std::string RepeatedRows::Reason(std::string_view what, std::uint32_t earlier) {
  return std::string(what) + " se repite: ya está en la fila " + std::to_string(earlier) + " de la hoja";
}

}  // namespace tolvan
