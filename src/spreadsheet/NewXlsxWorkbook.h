// A new workbook, kept in memory until it is written whole into its place: it needs no temporary file that a full disk
// could cut.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "base/Calendar.h"
#include "host/FileHelper.h"
#include "host/SpreadsheetApplication.h"
#include "spreadsheet/NewSheet.h"

namespace tolvan {

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
