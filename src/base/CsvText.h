// Texts on their way into a .csv report. Numbers and dates of the component's own do not pass here: a negative amount
// stays a number.
#pragma once

#include <string>
#include <string_view>

namespace tolvan {

/// The text as a field between commas: quoted where it needs to be, and with an apostrophe before everything that a
/// spreadsheet would calculate in place of showing it (see docs/formats.md).
std::string CsvText(std::string_view text);

}  // namespace tolvan
