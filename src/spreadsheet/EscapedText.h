// The escapes of text in an .xlsx: "_x000D_" stands for the UTF-16 unit 000D, "_x005F_" for an underscore that would
// otherwise begin such an escape (ST_Xstring of ECMA-376).
#pragma once

#include <string>
#include <string_view>

namespace tolvan {

/// Replaces the escapes, once from left to right. Two units that form a pair become one character, a lone half of a
/// pair U+FFFD, and a NUL, which no column of the store can hold, is left out.
void DecodeEscapedText(std::string& text);

/// A text in which what looks like an escape, and is none, is guarded so that it reads back as it is. Characters that
/// XML does not hold are not looked at.
std::string GuardEscapes(std::string_view text);

}  // namespace tolvan
