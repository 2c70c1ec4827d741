// A new workbook, written by libxlsxwriter into a temporary file. The file is read back before it takes its place,
// because the library does not notice a device that fills up under its own temporary files.
#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "base/Calendar.h"
#include "host/FileHelper.h"
#include "host/SpreadsheetApplication.h"

namespace tolvan {

class NewXlsxWorkbook : public NewWorkbook {
 public:
  struct Options {
    Date created;
    std::string openFolder;         ///< where OpenForUser puts the file
    std::string openName;           ///< its name without number and extension
    std::uint32_t headingRows = 0;  ///< rows of the template's headings; data begins below them
  };

  /// `files` must outlive the object. Throws HostError Full, Access or Failed.
  NewXlsxWorkbook(FileHelper& files, Options options);
  ~NewXlsxWorkbook() override;

  /// A row of the template's headings, to its own place. Rows come in ascending order, before any AppendRow.
  void WriteHeading(const SheetRow& row);

  void AppendRow(std::span<const NewCell> cells, NewRowStyle style) override;
  void SaveAs(std::string_view path) override;
  std::string OpenForUser() override;

 private:
  struct Book;
  void WriteCell(std::uint32_t row, std::uint32_t column, const NewCell& cell, void* textFormat, void* numberFormat);
  void Finish();
  void Verify() const;

  FileHelper& files_;
  Options options_;
  std::unique_ptr<Book> book_;
  std::uint32_t nextRow_;  // from 0
  std::uint64_t cellsWritten_ = 0;
};

}  // namespace tolvan
