// UTF-8 text. Lengths count characters (code points). Every function accepts bytes that are not UTF-8: a byte that
// begins no character counts as one character and passes through unchanged.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tolvan {

bool IsValidUtf8(std::string_view text);

/// The number of characters.
std::size_t CountCharacters(std::string_view text);

/// The first `count` characters, never cutting one in two; the whole text when it is shorter.
std::string_view FirstCharacters(std::string_view text, std::size_t count);

/// Case mapping character by character (ñ to Ñ, ß stays ß), independent of any locale.
std::string ToUpper(std::string_view text);
std::string ToLower(std::string_view text);

/// Without leading and trailing blanks (U+0020). Tabs, line ends and other white space stay.
std::string_view TrimBlanks(std::string_view text);

/// Every occurrence, left to right, not looking again at what was put in. An empty `what` changes nothing.
std::string ReplaceAll(std::string_view text, std::string_view what, std::string_view with);

/// As ReplaceAll, but upper and lower case count as the same character.
std::string ReplaceAllIgnoringCase(std::string_view text, std::string_view what, std::string_view with);
bool ContainsIgnoringCase(std::string_view text, std::string_view what);
bool EqualIgnoringCase(std::string_view left, std::string_view right);

/// The pieces between separators; an empty text gives one empty piece. The pieces point into `text`.
std::vector<std::string_view> Split(std::string_view text, char separator);

/// A whole text that is a decimal integer with an optional sign and nothing else; nothing when it is not or does not
/// fit.
std::optional<std::int32_t> ParseInteger(std::string_view text);

/// Appends one code point as UTF-8. A surrogate or a value past U+10FFFF becomes U+FFFD.
void AppendCodePoint(std::string& text, char32_t codePoint);

/// Reads the character that begins at `position` and moves `position` behind it. A byte that begins no character is
/// returned as 0xDC80 to 0xDCFF (its value plus 0xDC00) and is one byte long. `position` must lie inside the text.
char32_t NextCodePoint(std::string_view text, std::size_t& position);

}  // namespace tolvan
