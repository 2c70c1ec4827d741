// The text form of a small store of named values, made so that a file that is not whole can be told from one that is:
//
//   tolvan-valores 1
//   IMPEXP/0=0001
//   IMPEXP/6=C:\\Ventas
//   fin 2
//
// One entry a line, sorted by name; the last line counts them and ends with a line feed like every other. In a value
// "\" is written "\\", and control characters and bytes that are not UTF-8 "\x" with two upper-case hexadecimal digits.
// The two halves of a name have the same done to "/" and "=" as well. The parser takes exactly what the writer writes,
// in any order of lines.
#pragma once

#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

namespace tolvan {

/// Section and key.
using ValueName = std::pair<std::string, std::string>;

using NamedValues = std::map<ValueName, std::string>;

std::string WriteKeyValueText(const NamedValues& values);

/// Nothing when the text is not a whole, undamaged store.
std::optional<NamedValues> ParseKeyValueText(std::string_view text);

}  // namespace tolvan
