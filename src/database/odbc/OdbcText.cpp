#include "database/odbc/OdbcText.h"

#include <cstddef>

namespace tolvan {
namespace {

constexpr char32_t replacement = 0xFFFD;

struct Decoded {
  char32_t character;
  std::size_t length;
};

Decoded DecodeAt(std::string_view text, std::size_t start) {
  const auto lead = static_cast<unsigned char>(text[start]);
  if (lead < 0x80) return {lead, 1};
  const std::size_t length = lead >= 0xF0 ? 4 : lead >= 0xE0 ? 3 : 2;
  if (lead < 0xC2 || lead > 0xF4 || start + length > text.size()) return {replacement, 1};
  char32_t character = lead & (0xFFU >> (length + 1));
  for (std::size_t index = 1; index < length; ++index) {
    const auto next = static_cast<unsigned char>(text[start + index]);
    if ((next & 0xC0U) != 0x80U) return {replacement, 1};
    character = (character << 6U) | (next & 0x3FU);
  }
  const bool overlong = (length == 3 && character < 0x800) || (length == 4 && character < 0x10000);
  const bool surrogate = character >= 0xD800 && character <= 0xDFFF;
  if (overlong || surrogate || character > 0x10FFFF) return {replacement, 1};
  return {character, length};
}

void AppendUtf8(std::string& text, char32_t character) {
  const auto byte = [&](char32_t value) { text += static_cast<char>(static_cast<unsigned char>(value)); };
  if (character < 0x80) {
    byte(character);
    return;
  }
  if (character < 0x800) {
    byte(0xC0U | (character >> 6U));
  } else {
    if (character < 0x10000) {
      byte(0xE0U | (character >> 12U));
    } else {
      byte(0xF0U | (character >> 18U));
      byte(0x80U | ((character >> 12U) & 0x3FU));
    }
    byte(0x80U | ((character >> 6U) & 0x3FU));
  }
  byte(0x80U | (character & 0x3FU));
}

}  // namespace

std::u16string WideText(std::string_view utf8) {
  std::u16string wide;
  wide.reserve(utf8.size());
  for (std::size_t position = 0; position < utf8.size();) {
    const Decoded decoded = DecodeAt(utf8, position);
    position += decoded.length;
    if (decoded.character < 0x10000) {
      wide += static_cast<char16_t>(decoded.character);
    } else {
      const char32_t offset = decoded.character - 0x10000;
      wide += static_cast<char16_t>(0xD800U + (offset >> 10U));
      wide += static_cast<char16_t>(0xDC00U + (offset & 0x3FFU));
    }
  }
  return wide;
}

std::string NarrowText(std::u16string_view wide) {
  std::string text;
  text.reserve(wide.size());
  for (std::size_t index = 0; index < wide.size(); ++index) {
    const char16_t unit = wide[index];
    const bool high = unit >= 0xD800 && unit < 0xDC00;
    const bool pair = high && index + 1 < wide.size() && wide[index + 1] >= 0xDC00 && wide[index + 1] < 0xE000;
    if (pair) {
      const char32_t top = static_cast<char32_t>(unit - 0xD800) << 10U;
      AppendUtf8(text, 0x10000U + top + (wide[++index] - 0xDC00U));
    } else {
      AppendUtf8(text, unit >= 0xD800 && unit < 0xE000 ? replacement : char32_t{unit});
    }
  }
  return text;
}

}  // namespace tolvan
