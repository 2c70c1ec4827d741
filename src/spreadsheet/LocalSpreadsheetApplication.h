// The spreadsheet application where none is installed that could be driven: readers for .xlsx and .xls, new workbooks
// written by the writer of this room, and the desktop's own program to show them; and the module that holds all of it.
#pragma once

#include <string>

#include "host/FileHelper.h"
#include "host/SpreadsheetApplication.h"
#include "host/SystemServices.h"

namespace tolvan {

class LocalSpreadsheetApplication : public SpreadsheetApplication {
 public:
  /// `newWorkbookFolder` (absolute, made when missing) takes the workbooks that are opened for the user. The clock's
  /// day becomes the date of creation inside a workbook, so that the same content on the same day is the same file.
  LocalSpreadsheetApplication(const Clock& clock, FileHelper& files, std::string newWorkbookFolder)
      : clock_(clock), files_(files), newWorkbookFolder_(std::move(newWorkbookFolder)) {}

  void Start() override {}
  std::unique_ptr<WorksheetReader> OpenFirstWorksheet(std::string_view path, const Interruption& interruption) override;
  std::unique_ptr<NewWorkbook> CreateFromTemplate(std::string_view templatePath, std::uint32_t headingRows) override;

 private:
  const Clock& clock_;
  FileHelper& files_;
  std::string newWorkbookFolder_;
};

/// The module: a library of its own, loaded when a workbook or a zip is first needed, because linking libxml2 and
/// libzip costs every start of a program about as much as a short command itself takes.
inline constexpr const char* spreadsheetModuleFile = "libtolvan_spreadsheet.so";

}  // namespace tolvan

// The module's entry points.
extern "C" {

/// The caller owns the result, which is never null, and deletes it. References must outlive it.
using TolvanMakeSpreadsheetApplication = tolvan::SpreadsheetApplication*(const tolvan::Clock& clock,
                                                                         tolvan::FileHelper& files,
                                                                         const std::string& newWorkbookFolder);

TolvanMakeSpreadsheetApplication tolvanMakeSpreadsheetApplication;

/// Likewise.
using TolvanMakeArchiveReader = tolvan::ArchiveReader*();

TolvanMakeArchiveReader tolvanMakeArchiveReader;
}
