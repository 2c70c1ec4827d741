// Percent-encoding of the bytes of a text (RFC 3986).
#pragma once

#include <string>
#include <string_view>

namespace tolvan {

/// Every byte that is no ASCII letter, digit, "-", ".", "_" or "~" becomes "%" and two upper-case hexadecimal digits.
std::string PercentEncode(std::string_view text);

/// The inverse, hexadecimal digits in either casing. A "%" that two such digits do not follow stays as it is, and so
/// does "+".
std::string PercentDecode(std::string_view text);

}  // namespace tolvan
