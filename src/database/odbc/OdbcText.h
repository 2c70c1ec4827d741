// ODBC's wide characters, which are UTF-16 units of two bytes on Windows and in unixODBC alike, though of different
// types. Seen from here they are char16_t.
#pragma once

#include <string>
#include <string_view>

namespace tolvan {

/// Bytes that are no UTF-8 become U+FFFD.
std::u16string WideText(std::string_view utf8);

/// A surrogate that stands alone becomes U+FFFD.
std::string NarrowText(std::u16string_view wide);

}  // namespace tolvan
