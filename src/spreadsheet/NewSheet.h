// The rows of a new worksheet as XML, with the texts that its cells share and the widths that its columns take.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "host/SpreadsheetApplication.h"

namespace tolvan {

/// The formats of a new workbook's cells: places in the table of its part of styles (NewWorkbookParts.cpp).
enum class NewCellStyle : std::uint8_t { Plain, Title, Note, Heading, Explanation, Text };

class NewSheet {
 public:
  /// The formats of a row's cells, and its height in points; 0 leaves it to the program that shows it.
  struct RowFormat {
    NewCellStyle text = NewCellStyle::Text;
    NewCellStyle number = NewCellStyle::Plain;
    double height = 0;
  };

  /// Writes the cells from column 1 on into row `number` (from 1, ascending). Throws HostError InvalidValue for what no
  /// cell or sheet holds; then the row is not there.
  void AppendRow(std::uint32_t number, std::span<const NewCell> cells, RowFormat format);

  /// Makes a column (from 0) at least as wide as so many characters, within reason.
  void Widen(std::size_t column, std::size_t characters);

  /// The worksheet with its first rows frozen, and the texts that its cells share: the pieces of the two parts. They
  /// are valid until the next call.
  std::vector<std::string_view> WorksheetPart(std::uint32_t frozenRows);
  std::vector<std::string_view> TextsPart();

 private:
  std::string CellXml(std::uint32_t row, std::size_t column, const NewCell& cell, RowFormat format);
  std::size_t NumberOfText(std::string_view text);

  std::vector<std::string> rows_;   // in pieces, so that growing copies little
  std::vector<std::string> texts_;  // likewise
  std::unordered_map<std::string, std::size_t> numbers_;
  std::size_t textCells_ = 0;
  std::uint32_t lastRow_ = 0;
  std::size_t columns_ = 0;
  std::vector<double> widths_;  // in characters
  std::string worksheetHead_;
  std::string textsHead_;
};

}  // namespace tolvan
