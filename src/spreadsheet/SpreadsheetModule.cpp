#include <new>
#include "spreadsheet/LocalSpreadsheetApplication.h"

#include <memory>

#include "spreadsheet/ZipPackage.h"

extern "C" {

[[gnu::visibility("default")]] tolvan::SpreadsheetApplication* tolvanMakeSpreadsheetApplication(
    const tolvan::Clock& clock, tolvan::FileHelper& files, const std::string& newWorkbookFolder) {
  return std::make_unique<tolvan::LocalSpreadsheetApplication>(clock, files, newWorkbookFolder).release();
}

[[gnu::visibility("default")]] tolvan::ArchiveReader* tolvanMakeArchiveReader() {
  return std::make_unique<tolvan::ZipArchiveReader>().release();
}
}
