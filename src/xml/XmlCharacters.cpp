#include "xml/XmlCharacters.h"

#include <algorithm>

#include "base/Text.h"

namespace tolvan {
namespace {

constexpr char32_t replacement = 0xFFFD;

bool IsPlain(char c) {
  return (c >= 0x20 && c < 0x7F && c != '&' && c != '<' && c != '>') || c == '\t' || c == '\n';
}

/// Quick; may say no to a text that needs no change.
bool IsPlainText(std::string_view text) {
  // Without an early end, so that the compiler can look at many bytes at once; nearly every text is plain.
  unsigned other = 0;
  for (const char c : text) {
    const auto byte = static_cast<unsigned char>(c);
    other |= static_cast<unsigned>(byte < 0x20) | static_cast<unsigned>(byte > 0x7E) |
             static_cast<unsigned>(byte == '&') | static_cast<unsigned>(byte == '<') |
             static_cast<unsigned>(byte == '>');
  }
  return other == 0;
}

// Stray bytes come from NextCodePoint as surrogates, which are not allowed either.
bool IsAllowed(char32_t c) {
  if (c < 0x20) return c == '\t' || c == '\n' || c == '\r';
  return (c < 0xD800 || c > 0xDFFF) && c != 0xFFFE && c != 0xFFFF && c <= 0x10FFFF;
}

void AppendCharacter(std::string& out, char32_t c) {
  switch (c) {
    case '&':
      out += "&amp;";
      break;
    case '<':
      out += "&lt;";
      break;
    case '>':
      out += "&gt;";
      break;
    case '\r':
      out += "&#13;";
      break;
    default:
      AppendCodePoint(out, IsAllowed(c) ? c : replacement);
  }
}

}  // namespace

bool IsXmlName(std::string_view text) {
  const auto isLetter = [](char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_' || static_cast<unsigned char>(c) > 0x7F;
  };
  const auto follows = [&](char c) { return isLetter(c) || (c >= '0' && c <= '9') || c == '-' || c == '.'; };
  return !text.empty() && isLetter(text.front()) && std::all_of(text.begin(), text.end(), follows);
}

void AppendXmlText(std::string& out, std::string_view text) {
  if (IsPlainText(text)) {
    out += text;
    return;
  }
  for (std::size_t position = 0; position < text.size();) {
    const auto* const start = text.begin() + position;
    const auto* const stop = std::find_if_not(start, text.end(), IsPlain);
    out.append(start, stop);
    position += static_cast<std::size_t>(stop - start);
    if (position < text.size()) AppendCharacter(out, NextCodePoint(text, position));
  }
}

}  // namespace tolvan
