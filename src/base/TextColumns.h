// The width of UTF-8 text where every character has its cell: a terminal. An accented letter takes one column, a wide
// character (of Chinese, say) two, a combining one none. A byte that begins no character takes one.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace tolvan {

std::size_t CountColumns(std::string_view text);

/// The longest beginning that fits `columns`, never cutting a character in two.
std::string_view FirstColumns(std::string_view text, std::size_t columns);

/// The text when it fits, else its beginning and "…" in `columns`.
std::string CutToColumns(std::string_view text, std::size_t columns);

/// The text on lines of at most `columns` (at least 1), broken at blanks, and inside a word only when the word is
/// longer than a line. Line ends in the text stay; so do the blanks that begin its lines. At least one line.
std::vector<std::string> WrapAtWords(std::string_view text, std::size_t columns);

}  // namespace tolvan
