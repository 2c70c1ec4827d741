#include "platform/spreadsheet/SpreadsheetModule.h"

#include <new>

#include "platform/spreadsheet/LocalSpreadsheetApplication.h"

extern "C" {

[[gnu::visibility("default")]] tolvan::SpreadsheetApplication* tolvanMakeSpreadsheetApplication(
    const tolvan::Clock& clock, tolvan::FileHelper& files, const std::string& newWorkbookFolder) {
  return new (std::nothrow) tolvan::LocalSpreadsheetApplication(clock, files, newWorkbookFolder);
}
}
