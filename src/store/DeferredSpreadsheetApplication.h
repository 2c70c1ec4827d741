#pragma once

#include <memory>
#include <string>

#include "host/FileHelper.h"
#include "host/SpreadsheetApplication.h"
#include "host/SystemServices.h"
#include "spreadsheet/LocalSpreadsheetApplication.h"
#include "system/posix/PosixServices.h"

namespace tolvan {

/// The spreadsheet application of the spreadsheet module, loaded when the first workbook is read or made.
class DeferredSpreadsheetApplication final : public SpreadsheetApplication {
 public:
  /// The references must outlive the object; `newWorkbookFolder` (absolute, made when missing) takes the workbooks that
  /// are opened for the user.
  DeferredSpreadsheetApplication(const Clock& clock, FileHelper& files, std::string newWorkbookFolder)
      : clock_(clock), files_(files), newWorkbookFolder_(std::move(newWorkbookFolder)) {}

  /// A module that cannot be loaded is an application that is not installed: HostError Unreachable.
  void Start() override { static_cast<void>(Loaded()); }
  std::unique_ptr<WorksheetReader> OpenFirstWorksheet(std::string_view path, const Interruption& interruption) override;
  std::unique_ptr<NewWorkbook> CreateFromTemplate(std::string_view templatePath, std::uint32_t headingRows) override;

 private:
  SpreadsheetApplication& Loaded();

  const Clock& clock_;
  FileHelper& files_;
  std::string newWorkbookFolder_;
  ModuleLoader module_{spreadsheetModuleFile, "el módulo de libros de Excel"};
  std::unique_ptr<SpreadsheetApplication> application_;
};

}  // namespace tolvan
