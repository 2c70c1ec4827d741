#include <new>

#include "spreadsheet/LocalSpreadsheetApplication.h"
#include "spreadsheet/ZipPackage.h"

extern "C" {

[[gnu::visibility("default")]] tolvan::SpreadsheetApplication* tolvanMakeSpreadsheetApplication(
    const tolvan::Clock& clock, tolvan::FileHelper& files, const std::string& newWorkbookFolder) {
  return new (std::nothrow) tolvan::LocalSpreadsheetApplication(clock, files, newWorkbookFolder);
}

[[gnu::visibility("default")]] tolvan::ArchiveReader* tolvanMakeArchiveReader() {
  return new (std::nothrow) tolvan::ZipArchiveReader();
}
}
