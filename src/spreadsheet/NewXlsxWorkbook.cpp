#include "spreadsheet/NewXlsxWorkbook.h"

#include <algorithm>

#include "base/Text.h"
#include "system/posix/PosixServices.h"

namespace tolvan {
namespace {

constexpr std::size_t headingCharacters = 16;
constexpr double explanationHeight = 90;  // points: six lines
constexpr std::string_view extension = ".xlsx";

/// From below: explanations, names of the columns, notes, and the title in the first row.
NewCellStyle HeadingStyle(std::uint32_t row, std::uint32_t headingRows) {
  if (row == headingRows && headingRows > 1) return NewCellStyle::Explanation;
  if (row + 1 >= headingRows) return NewCellStyle::Heading;
  return row == 1 ? NewCellStyle::Title : NewCellStyle::Note;
}

}  // namespace

void NewXlsxWorkbook::WriteHeading(const SheetRow& row) {
  const NewCellStyle style = HeadingStyle(row.number, options_.headingRows);
  std::vector<std::string> texts(row.cells.empty() ? 0 : row.cells.back().column);
  for (const SheetCell& cell : row.cells) {
    texts[cell.column - 1] = cell.AsText();
    if (style == NewCellStyle::Heading)
      sheet_.Widen(cell.column - 1, std::max(headingCharacters, CountCharacters(texts[cell.column - 1])));
  }
  const std::vector<NewCell> cells(texts.begin(), texts.end());
  // The programs do not all fit a row to its wrapped text by themselves.
  const double height = style == NewCellStyle::Explanation ? explanationHeight : 0;
  sheet_.AppendRow(row.number, cells, {.text = style, .number = style, .height = height});
}

void NewXlsxWorkbook::AppendRow(std::span<const NewCell> cells, NewRowStyle style) {
  const bool isHeading = style == NewRowStyle::Heading;
  NewSheet::RowFormat format;
  if (isHeading) format.text = format.number = NewCellStyle::Heading;
  sheet_.AppendRow(lastRow_ + 1, cells, format);
  ++lastRow_;
  for (std::size_t column = 0; column < cells.size(); ++column) {
    if (const auto* text = std::get_if<std::string_view>(&cells[column])) sheet_.Widen(column, CountCharacters(*text));
  }
  if (lastRow_ == 1) beginsWithHeading_ = isHeading;
}

void NewXlsxWorkbook::SaveAs(std::string_view path) {
  if (path.size() < extension.size() || !EqualIgnoringCase(path.substr(path.size() - extension.size()), extension))
    throw HostError(HostErrorKind::InvalidValue, "el nombre de un libro nuevo debe terminar en .xlsx",
                    std::string(path));
  const auto target = files_.CreateWhole(path);
  WriteXlsxPackage(sheet_, beginsWithHeading_ ? 1 : options_.headingRows, options_.created, *target);
  target->Commit();
}

std::string NewXlsxWorkbook::OpenForUser() {
  files_.MakeFolder(options_.openFolder);
  std::string path;
  for (int number = 1; path.empty() || files_.FileExists(path); ++number)
    path = files_.Join(options_.openFolder, options_.openName + "-" + std::to_string(number) + std::string(extension));
  SaveAs(path);
  OpenWithDesktop(path);
  return path;
}

}  // namespace tolvan
