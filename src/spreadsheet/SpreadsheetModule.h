// The entry points of the module that holds the readers and writers of workbooks, the reader of zips, and their
// libraries. It is a library of its own, loaded when one of them is first used: linking libxml2 and libzip costs every
// start of a program about as much as a short order itself takes.
#pragma once

#include <string>

#include "host/FileHelper.h"
#include "host/SpreadsheetApplication.h"
#include "host/SystemServices.h"

extern "C" {

/// The caller owns the result and deletes it; null when there is no memory. References must outlive it.
using TolvanMakeSpreadsheetApplication = tolvan::SpreadsheetApplication*(const tolvan::Clock& clock,
                                                                         tolvan::FileHelper& files,
                                                                         const std::string& newWorkbookFolder);

TolvanMakeSpreadsheetApplication tolvanMakeSpreadsheetApplication;

/// Likewise.
using TolvanMakeArchiveReader = tolvan::ArchiveReader*();

TolvanMakeArchiveReader tolvanMakeArchiveReader;
}

namespace tolvan {

inline constexpr const char* spreadsheetModuleFile = "libtolvan_spreadsheet.so";

}  // namespace tolvan
