// What the beginning of a file tells about it: whether it can be the registry at all, and its encoding.
#pragma once

#include <cstddef>
#include <string_view>

namespace tolvan {

/// So much of a file is looked at.
inline constexpr std::size_t registryBeginning = std::size_t{1} << 20;

/// What a file with this beginning is instead of the registry's text, such as "una página web"; empty when it may be
/// that text. Spanish, with its article.
std::string_view KindOfOtherFile(std::string_view beginning);

/// Whether it is a zip, which may hold the registry.
bool BeginsAsZip(std::string_view beginning);

/// Valid UTF-8 with at least one character beyond ASCII. A character that the end of a full beginning cuts in two is
/// not looked at.
bool BeginsAsUtf8(std::string_view beginning);

}  // namespace tolvan
