// Reads a host configuration (tolvan.ini).
//
// Lines are "[section]", "key = value", empty, or comments. A comment begins with ";" at the beginning of a line or of
// a value, or behind a blank; a ";" inside a value, as in an ODBC connection string, belongs to it. Blanks around keys
// and values do not count. Names of sections and keys are written as they are listed, in lower case. The file is UTF-8,
// with or without a byte order mark, with LF or CR LF. A section may stand in several places, a key only once.
#pragma once

#include <string>
#include <string_view>

#include "host/FileHelper.h"
#include "store/HostConfiguration.h"

namespace tolvan {

/// Reads the file at `path`, absolute; `engines` are those that it may name. Throws HostError Configuration; the text
/// names the file, and every line that cannot be used with its number and the cause.
HostConfiguration ReadHostConfiguration(FileHelper& files, const std::string& path,
                                        std::span<const DatabaseEngine> engines = DatabaseEngines());

/// The same from the content of the file.
HostConfiguration ParseHostConfiguration(std::string_view content, const std::string& path,
                                         std::span<const DatabaseEngine> engines = DatabaseEngines());

}  // namespace tolvan
