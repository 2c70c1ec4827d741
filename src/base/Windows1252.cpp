#include "base/Windows1252.h"

#include <algorithm>
#include <array>

#include "base/Text.h"

namespace tolvan {
namespace {

constexpr std::array<char16_t, 32> upperControls = {0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021,
                                                    0x02C6, 0x2030, 0x0160, 0x2039, 0x0152, 0x008D, 0x017D, 0x008F,
                                                    0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014,
                                                    0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};

std::optional<char> ByteOf(char32_t c) {
  if (c < 0x80 || (c >= 0xA0 && c <= 0xFF)) return static_cast<char>(c);
  const auto found = std::find(upperControls.begin(), upperControls.end(), c);
  if (found == upperControls.end()) return std::nullopt;
  return static_cast<char>(0x80 + (found - upperControls.begin()));
}

}  // namespace

std::string FromWindows1252(std::string_view bytes) {
  std::string text;
  text.reserve(bytes.size() + bytes.size() / 8);
  for (const char c : bytes) {
    const auto byte = static_cast<unsigned char>(c);
    if (byte < 0x80) {
      text += c;
    } else {
      AppendCodePoint(text, byte < 0xA0 ? char32_t{upperControls[byte - 0x80U]} : char32_t{byte});
    }
  }
  return text;
}

std::optional<std::string> ToWindows1252(std::string_view text) {
  std::string bytes;
  bytes.reserve(text.size());
  for (std::size_t position = 0; position < text.size();) {
    const std::optional<char> byte = ByteOf(NextCodePoint(text, position));
    if (!byte) return std::nullopt;
    bytes += *byte;
  }
  return bytes;
}

std::string_view FirstBeyondWindows1252(std::string_view text) {
  for (std::size_t position = 0; position < text.size();) {
    const std::size_t begin = position;
    if (!ByteOf(NextCodePoint(text, position))) return text.substr(begin, position - begin);
  }
  return {};
}

std::string ToWindows1252(std::string_view text, char substitute) {
  std::string bytes;
  bytes.reserve(text.size());
  for (std::size_t position = 0; position < text.size();) {
    bytes += ByteOf(NextCodePoint(text, position)).value_or(substitute);
  }
  return bytes;
}

}  // namespace tolvan
