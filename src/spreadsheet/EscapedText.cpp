#include "spreadsheet/EscapedText.h"

#include <charconv>
#include <optional>

#include "base/Text.h"

namespace tolvan {
namespace {

constexpr std::size_t escapeLength = 7;

std::optional<char32_t> UnitAt(std::string_view text, std::size_t position) {
  if (text.size() - position < escapeLength || text[position + 1] != 'x' || text[position + 6] != '_')
    return std::nullopt;
  const char* digits = text.data() + position + 2;
  unsigned unit = 0;
  const auto [end, error] = std::from_chars(digits, digits + 4, unit, 16);
  if (error != std::errc() || end != digits + 4) return std::nullopt;
  return unit;
}

bool IsHigh(char32_t unit) {
  return unit >= 0xD800 && unit <= 0xDBFF;
}

bool IsLow(char32_t unit) {
  return unit >= 0xDC00 && unit <= 0xDFFF;
}

}  // namespace

void DecodeEscapedText(std::string& text) {
  std::size_t next = text.find("_x");
  if (next == std::string::npos) return;
  std::string decoded;
  std::size_t copied = 0;
  for (; next != std::string::npos; next = text.find("_x", next)) {
    const auto unit = UnitAt(text, next);
    if (!unit) {
      next += 1;
      continue;
    }
    decoded.append(text, copied, next - copied);
    next += escapeLength;
    char32_t codePoint = *unit;
    if (IsHigh(*unit) && next < text.size() && text[next] == '_') {
      if (const auto low = UnitAt(text, next); low && IsLow(*low)) {
        codePoint = 0x10000 + ((*unit - 0xD800) << 10) + (*low - 0xDC00);
        next += escapeLength;
      }
    }
    if (codePoint != 0) AppendCodePoint(decoded, codePoint);
    copied = next;
  }
  decoded.append(text, copied);
  text = std::move(decoded);
}

std::string GuardEscapes(std::string_view text) {
  std::string guarded;
  std::size_t copied = 0;
  for (std::size_t next = text.find("_x"); next != std::string_view::npos; next = text.find("_x", next + 1)) {
    if (!UnitAt(text, next)) continue;
    guarded.append(text.substr(copied, next - copied)).append("_x005F_");
    copied = next + 1;
  }
  return guarded.append(text.substr(copied));
}

}  // namespace tolvan
