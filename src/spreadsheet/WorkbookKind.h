// What a file is by its first bytes, whatever its name says.
#pragma once

#include <string>

#include "spreadsheet/WorkbookFile.h"

namespace tolvan {

enum class WorkbookKind { Zip, Compound, Other };

WorkbookKind KindOf(const WorkbookFile& file);

/// For Other: what the file seems to be, as the cause of a failure.
std::string DescribeOther(const WorkbookFile& file);

}  // namespace tolvan
