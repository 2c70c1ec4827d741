// A new workbook, kept in memory until it is written whole into its place: nothing of it ever lies in a temporary file
// that a full disk could cut or a killed program leave behind.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "base/Calendar.h"
#include "host/FileHelper.h"
#include "host/SpreadsheetApplication.h"

namespace tolvan {

/// The formats of a new workbook's cells: places in the table of its part of styles (NewXlsxPackage.cpp).
enum class NewCellStyle : std::uint8_t { Plain, Title, Note, Heading, Explanation, Text };

/// The rows of a new worksheet as XML, with the texts that its cells share and the widths that its columns take.
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

/// Packs the sheet, its first rows frozen, into a workbook and appends that to `target`. The same sheet and day are the
/// same bytes. Throws HostError as WholeFile does, and Failed when there is not enough memory.
void WriteXlsxPackage(NewSheet& sheet, std::uint32_t frozenRows, Date created, WholeFile& target);

class NewXlsxWorkbook : public NewWorkbook {
 public:
  struct Options {
    Date created;
    std::string openFolder;         ///< where OpenForUser puts the file
    std::string openName;           ///< its name without number and extension
    std::uint32_t headingRows = 0;  ///< rows of the template's headings; data begins below them
  };

  /// `files` must outlive the object.
  NewXlsxWorkbook(FileHelper& files, Options options)
      : files_(files), options_(std::move(options)), lastRow_(options_.headingRows) {}

  /// A row of the template's headings, to its own place. Rows come in ascending order, before any AppendRow.
  void WriteHeading(const SheetRow& row);

  void AppendRow(std::span<const NewCell> cells, NewRowStyle style) override;
  void SaveAs(std::string_view path) override;
  std::string OpenForUser() override;

 private:
  FileHelper& files_;
  Options options_;
  NewSheet sheet_;
  std::uint32_t lastRow_;  // from 1
  bool beginsWithHeading_ = false;
};

}  // namespace tolvan
