#include "base/PercentEncoding.h"

#include <charconv>

namespace tolvan {
namespace {

constexpr std::string_view plainMarks = "-._~";
constexpr std::string_view hexDigits = "0123456789ABCDEF";

bool IsPlain(char character) {
  const bool isLetter = (character >= 'a' && character <= 'z') || (character >= 'A' && character <= 'Z');
  return isLetter || (character >= '0' && character <= '9') || plainMarks.find(character) != std::string_view::npos;
}

/// Whether two hexadecimal digits were there; only then `byte` is set.
bool ReadByte(std::string_view digits, unsigned char& byte) {
  if (digits.size() < 2) return false;
  const auto [end, error] = std::from_chars(digits.data(), digits.data() + 2, byte, 16);
  return error == std::errc() && end == digits.data() + 2;
}

}  // namespace

std::string PercentEncode(std::string_view text) {
  std::string encoded;
  encoded.reserve(text.size());
  for (const char character : text) {
    if (IsPlain(character)) {
      encoded += character;
      continue;
    }
    const auto byte = static_cast<unsigned char>(character);
    encoded += '%';
    encoded += hexDigits[byte >> 4U];
    encoded += hexDigits[byte & 0xFU];
  }
  return encoded;
}

std::string PercentDecode(std::string_view text) {
  std::string decoded;
  decoded.reserve(text.size());
  for (std::size_t position = 0; position < text.size(); ++position) {
    unsigned char byte = 0;
    if (text[position] == '%' && ReadByte(text.substr(position + 1), byte)) {
      decoded += static_cast<char>(byte);
      position += 2;
    } else {
      decoded += text[position];
    }
  }
  return decoded;
}

}  // namespace tolvan
