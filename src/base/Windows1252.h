// The single-byte code page that the store's external files use. The five bytes that it leaves undefined (81, 8D, 8F,
// 90, 9D) stand for the control characters of the same number, as Windows itself maps them, so that every byte makes
// the way to UTF-8 and back unchanged. Source of the table: the Unicode consortium's mapping file CP1252.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace tolvan {

std::string FromWindows1252(std::string_view bytes);

/// The bytes of a UTF-8 text; nothing when a character has no byte in the code page.
std::optional<std::string> ToWindows1252(std::string_view text);

/// The same with `substitute` for every character that has no byte.
std::string ToWindows1252(std::string_view text, char substitute);

/// The first character of a UTF-8 text that has no byte in the code page; empty when all have one.
std::string_view FirstBeyondWindows1252(std::string_view text);

}  // namespace tolvan
