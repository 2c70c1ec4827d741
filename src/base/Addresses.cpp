#include "base/Addresses.h"

#include <algorithm>

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

bool IsHostName(std::string_view text) {
  constexpr std::size_t longest = 253;
  if (text.empty() || text.size() > longest) return false;
  return text.find_first_of(" \t/\\@?#:[]<>\"%;,'") == std::string_view::npos;
}

bool IsBracketedAddress(std::string_view text) {
  if (text.size() < 3 || !text.starts_with('[') || !text.ends_with(']')) return false;
  return text.substr(1, text.size() - 2).find_first_not_of("0123456789abcdefABCDEF:.") == std::string_view::npos;
}

std::optional<std::uint16_t> ParsePort(std::string_view text) {
  constexpr std::int32_t highest = 65535;
  const std::optional<std::int32_t> number = text.starts_with('+') ? std::nullopt : ParseInteger(text);
  if (!number || *number < 1 || *number > highest) return std::nullopt;
  return static_cast<std::uint16_t>(*number);
}

}  // namespace

bool IsEmailAddress(std::string_view text) {
  if (!IsValidUtf8(text) || CountCharacters(text) > longestAddress || HasBlankOutsideAscii(text)) return false;
  const std::size_t at = text.find('@');
  if (at == std::string_view::npos || !IsLocalPart(text.substr(0, at))) return false;
  return IsDomain(text.substr(at + 1));
}

std::optional<ServerAddress> ServerAddress::Parse(std::string_view text) {
  const bool bracketed = text.starts_with('[');
  const std::size_t hostEnd = bracketed ? text.find(']') + 1 : std::min(text.find(':'), text.size());
  const std::string_view host = text.substr(0, hostEnd);
  if (!(bracketed ? IsBracketedAddress(host) : IsHostName(host))) return std::nullopt;
  ServerAddress server{.host = std::string(host)};
  if (hostEnd == text.size()) return server;
  const std::optional<std::uint16_t> port = ParsePort(text.substr(hostEnd + 1));
  if (text[hostEnd] != ':' || !port) return std::nullopt;
  server.port = *port;
  return server;
}

}  // namespace tolvan
