#include "base/EmailAddress.h"

#include "base/Text.h"

namespace tolvan {
namespace {

constexpr std::size_t longestAddress = 254;
constexpr std::size_t longestLocalPart = 64;
constexpr std::size_t longestLabel = 63;

bool IsOutsideAscii(char character) {
  return static_cast<unsigned char>(character) >= 0x80;
}

bool IsLetterOrDigit(char character) {
  return (character >= 'a' && character <= 'z') || (character >= 'A' && character <= 'Z') ||
         (character >= '0' && character <= '9') || IsOutsideAscii(character);
}

bool IsLocalPart(std::string_view text) {
  if (text.empty() || text.size() > longestLocalPart) return false;
  if (text.front() == '.' || text.back() == '.' || text.find("..") != std::string_view::npos) return false;
  constexpr std::string_view alsoAllowed = "!#$%&'*+-/=?^_`{|}~.";
  for (const char character : text) {
    if (!IsLetterOrDigit(character) && alsoAllowed.find(character) == std::string_view::npos) return false;
  }
  return true;
}

bool IsLabel(std::string_view text) {
  if (text.empty() || text.size() > longestLabel || text.front() == '-' || text.back() == '-') return false;
  for (const char character : text) {
    if (!IsLetterOrDigit(character) && character != '-') return false;
  }
  return true;
}

// Controls and blanks beyond ASCII; a text copied from a web page brings them along.
bool HasBlankOutsideAscii(std::string_view text) {
  for (std::size_t position = 0; position < text.size();) {
    const char32_t codePoint = NextCodePoint(text, position);
    const bool isSpace = (codePoint >= 0x80 && codePoint <= 0xA0) || (codePoint >= 0x2000 && codePoint <= 0x200F) ||
                         (codePoint >= 0x2028 && codePoint <= 0x202F) || codePoint == 0x3000 || codePoint == 0xFEFF;
    if (isSpace) return true;
  }
  return false;
}

bool IsDomain(std::string_view text) {
  if (text == "localhost") return true;
  const std::vector<std::string_view> labels = Split(text, '.');
  for (const std::string_view label : labels) {
    if (!IsLabel(label)) return false;
  }
  return labels.size() >= 2;
}

}  // namespace

bool IsEmailAddress(std::string_view text) {
  if (!IsValidUtf8(text) || CountCharacters(text) > longestAddress || HasBlankOutsideAscii(text)) return false;
  const std::size_t at = text.find('@');
  if (at == std::string_view::npos || !IsLocalPart(text.substr(0, at))) return false;
  return IsDomain(text.substr(at + 1));
}

}  // namespace tolvan
