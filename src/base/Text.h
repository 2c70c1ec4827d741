// UTF-8 text: its characters, its width on a terminal, and its way from and to the code page Windows-1252. Lengths
// count characters (code points). Every function accepts bytes that are not UTF-8: a byte that begins no character
// counts as one character and passes through unchanged.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tolvan {

/// Between the lines of a message to the user and of a text file: what Windows programs write and expect.
inline constexpr std::string_view lineBreak = "\r\n";

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

/// Appends a sentence to a text of them, "; " between.
void AppendSentence(std::string& sentences, std::string_view sentence);

/// The pieces between separators; an empty text gives one empty piece. The pieces point into `text`.
std::vector<std::string_view> Split(std::string_view text, char separator);

/// A whole text that is a decimal integer with an optional sign and nothing else; nothing when it is not or does not
/// fit.
std::optional<std::int32_t> ParseInteger(std::string_view text);

/// Appends one code point as UTF-8. A surrogate or a value past U+10FFFF becomes U+FFFD.
void AppendCodePoint(std::string& text, char32_t codePoint);

/// Reads the character that begins at `position` and moves `position` past it. A byte that begins no character is
/// returned as 0xDC80 to 0xDCFF (its value plus 0xDC00) and is one byte long. `position` must lie inside the text.
char32_t NextCodePoint(std::string_view text, std::size_t& position);

// The width of a text where every character has its cell: a terminal. An accented letter takes one column, a wide
// character (of Chinese, say) two, a combining one none. A byte that begins no character takes one.

std::size_t CountColumns(std::string_view text);

/// The longest beginning that fits `columns`, never cutting a character in two.
std::string_view FirstColumns(std::string_view text, std::size_t columns);

/// The text when it fits, else its beginning and "…" in `columns`.
std::string CutToColumns(std::string_view text, std::size_t columns);

/// The text on lines of at most `columns` (at least 1), broken at blanks, and inside a word only when the word is
/// longer than a line. Line ends in the text stay; so do the blanks that begin its lines. At least one line.
std::vector<std::string> WrapAtWords(std::string_view text, std::size_t columns);

// The single-byte code page that the store's external files use. The five bytes that it leaves undefined (81, 8D, 8F,
// 90, 9D) stand for the control characters of the same number, as Windows itself maps them, so that every byte
// goes to UTF-8 and back unchanged. Source of the table: the Unicode consortium's mapping file CP1252.

std::string FromWindows1252(std::string_view bytes);

/// The bytes of a UTF-8 text; nothing when a character has no byte in the code page.
std::optional<std::string> ToWindows1252(std::string_view text);

/// The same with `substitute` for every character that has no byte.
std::string ToWindows1252(std::string_view text, char substitute);

/// The first character of a UTF-8 text that has no byte in the code page; empty when all have one.
std::string_view FirstBeyondWindows1252(std::string_view text);

}  // namespace tolvan
