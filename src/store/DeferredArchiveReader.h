#pragma once

#include <memory>

#include "host/FileHelper.h"
#include "spreadsheet/LocalSpreadsheetApplication.h"
#include "system/posix/PosixServices.h"

namespace tolvan {

/// The archive reader of the spreadsheet module, loaded when the first archive is opened.
class DeferredArchiveReader final : public ArchiveReader {
 public:
  std::unique_ptr<Archive> OpenArchive(std::string_view path) override;

 private:
  ModuleLoader module_{spreadsheetModuleFile, "el módulo de libros de Excel y archivos comprimidos"};
  std::unique_ptr<ArchiveReader> reader_;
};

}  // namespace tolvan
