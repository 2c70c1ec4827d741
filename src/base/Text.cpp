#include "base/Text.h"

#include <utf8proc.h>

#include <algorithm>
#include <array>
#include <charconv>

namespace tolvan {
namespace {

constexpr char32_t strayByte = 0xDC00;
constexpr char32_t firstStray = 0xDC80;
constexpr char32_t lastStray = 0xDCFF;

void AppendKept(std::string& out, char32_t codePoint) {
  if (codePoint >= firstStray && codePoint <= lastStray) {
    out += static_cast<char>(codePoint - strayByte);
  } else {
    AppendCodePoint(out, codePoint);
  }
}

/// `map` takes ASCII as char, and every other character as its code point.
template <class Map>
std::string MapCharacters(std::string_view text, Map map) {
  std::string out;
  out.reserve(text.size());
  for (std::size_t position = 0; position < text.size();) {
    // Most text of a store is ASCII, which maps to ASCII.
    const auto* const begin = text.begin() + position;
    const auto* const end = std::find_if(begin, text.end(), [](char c) { return static_cast<signed char>(c) < 0; });
    const auto added = out.insert(out.end(), begin, end);
    std::transform(added, out.end(), added, [&](char c) { return map(c); });
    position = static_cast<std::size_t>(end - text.begin());
    if (end != text.end()) AppendKept(out, map(NextCodePoint(text, position)));
  }
  return out;
}

struct Upper {
  char operator()(char c) const { return static_cast<char>(c >= 'a' && c <= 'z' ? c - 32 : c); }
  char32_t operator()(char32_t c) const {
    if (c >= U'à' && c <= U'þ') return c == U'÷' ? c : c - 32;
    // The library maps ß to the rare capital U+1E9E, which no code page of the host holds.
    return c == U'ß' ? c : static_cast<char32_t>(utf8proc_toupper(static_cast<utf8proc_int32_t>(c)));
  }
};

struct Lower {
  char operator()(char c) const { return static_cast<char>(c >= 'A' && c <= 'Z' ? c + 32 : c); }
  char32_t operator()(char32_t c) const {
    if (c < 0x80) return static_cast<char32_t>((*this)(static_cast<char>(c)));
    return static_cast<char32_t>(utf8proc_tolower(static_cast<utf8proc_int32_t>(c)));
  }
};

/// The end of `what` matched at `start` of `text` without regard to case, or npos.
std::size_t MatchAt(std::string_view text, std::size_t start, std::string_view what) {
  std::size_t inText = start;
  std::size_t inWhat = 0;
  while (inWhat < what.size()) {
    if (inText >= text.size()) return std::string_view::npos;
    if (Lower()(NextCodePoint(text, inText)) != Lower()(NextCodePoint(what, inWhat))) return std::string_view::npos;
  }
  return inText;
}

std::size_t ColumnsOf(char32_t character) {
  if (character >= firstStray && character <= lastStray) return 1;
  return static_cast<std::size_t>(std::max(0, utf8proc_charwidth(static_cast<utf8proc_int32_t>(character))));
}

/// Where the line that begins at the start of `text` ends, and where the next one begins.
struct Break {
  std::size_t end;
  std::size_t next;
};

Break BreakOf(std::string_view text, std::size_t columns) {
  std::size_t fits = FirstColumns(text, columns).size();
  if (fits == text.size()) return {fits, fits};
  const std::size_t words = text.find_first_not_of(' ');
  // A blank right after what fits is a good place to break, too.
  const std::size_t blank = text.rfind(' ', fits);
  if (blank != std::string_view::npos && blank > words) {
    const std::size_t end = text.find_last_not_of(' ', blank) + 1;
    return {end, std::min(text.find_first_not_of(' ', blank), text.size())};
  }
  if (fits == 0) NextCodePoint(text, fits);  // a wide character on a line of one column
  return {fits, fits};
}

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

char32_t NextCodePoint(std::string_view text, std::size_t& position) {
  const auto lead = static_cast<unsigned char>(text[position]);
  if (lead < 0x80) {
    ++position;
    return lead;
  }
  // Two bytes hold every letter of Spanish.
  const bool isPair = lead >= 0xC2 && lead < 0xE0 && position + 1 < text.size();
  if (isPair && (static_cast<unsigned char>(text[position + 1]) & 0xC0U) == 0x80) {
    position += 2;
    return ((lead & 0x1FU) << 6U) | (static_cast<unsigned char>(text[position - 1]) & 0x3FU);
  }
  utf8proc_int32_t codePoint = -1;
  const auto* bytes = reinterpret_cast<const utf8proc_uint8_t*>(text.data() + position);
  const auto length = utf8proc_iterate(bytes, static_cast<utf8proc_ssize_t>(text.size() - position), &codePoint);
  if (length <= 0 || codePoint < 0) {
    ++position;
    return strayByte + lead;
  }
  position += static_cast<std::size_t>(length);
  return static_cast<char32_t>(codePoint);
}

void AppendCodePoint(std::string& text, char32_t codePoint) {
  if (codePoint < 0x80) {
    text += static_cast<char>(codePoint);
    return;
  }
  if (codePoint < 0x800) {
    text.append({static_cast<char>(0xC0U | (codePoint >> 6U)), static_cast<char>(0x80U | (codePoint & 0x3FU))});
    return;
  }
  if (codePoint > 0x10FFFF || (codePoint >= 0xD800 && codePoint <= 0xDFFF)) codePoint = 0xFFFD;
  std::array<utf8proc_uint8_t, 4> bytes{};
  const auto length = utf8proc_encode_char(static_cast<utf8proc_int32_t>(codePoint), bytes.data());
  text.append(bytes.begin(), bytes.begin() + length);
}

bool IsValidUtf8(std::string_view text) {
  for (std::size_t position = 0; position < text.size();) {
    const char32_t c = NextCodePoint(text, position);
    if (c >= firstStray && c <= lastStray) return false;
  }
  return true;
}

std::size_t CountCharacters(std::string_view text) {
  std::size_t count = 0;
  for (std::size_t position = 0; position < text.size(); ++count) NextCodePoint(text, position);
  return count;
}

std::string_view FirstCharacters(std::string_view text, std::size_t count) {
  if (text.size() <= count) return text;
  std::size_t position = 0;
  for (; count > 0 && position < text.size(); --count) NextCodePoint(text, position);
  return text.substr(0, position);
}

std::string ToUpper(std::string_view text) {
  return MapCharacters(text, Upper());
}

std::string ToLower(std::string_view text) {
  return MapCharacters(text, Lower());
}

std::string_view TrimBlanks(std::string_view text) {
  const std::size_t first = text.find_first_not_of(' ');
  if (first == std::string_view::npos) return text.substr(0, 0);
  return text.substr(first, text.find_last_not_of(' ') - first + 1);
}

std::string ReplaceAll(std::string_view text, std::string_view what, std::string_view with) {
  if (what.empty()) return std::string(text);
  std::string out;
  std::size_t start = 0;
  for (std::size_t found = 0; (found = text.find(what, start)) != std::string_view::npos; start = found + what.size()) {
    out.append(text, start, found - start).append(with);
  }
  return out.append(text, start);
}

std::string ReplaceAllIgnoringCase(std::string_view text, std::string_view what, std::string_view with) {
  if (what.empty()) return std::string(text);
  std::string out;
  for (std::size_t position = 0; position < text.size();) {
    const std::size_t end = MatchAt(text, position, what);
    if (end != std::string_view::npos) {
      out.append(with);
      position = end;
    } else {
      AppendKept(out, NextCodePoint(text, position));
    }
  }
  return out;
}

bool ContainsIgnoringCase(std::string_view text, std::string_view what) {
  for (std::size_t position = 0; position < text.size(); NextCodePoint(text, position)) {
    if (MatchAt(text, position, what) != std::string_view::npos) return true;
  }
  return what.empty();
}

bool EqualIgnoringCase(std::string_view left, std::string_view right) {
  return MatchAt(left, 0, right) == left.size();
}

void AppendSentence(std::string& sentences, std::string_view sentence) {
  if (!sentences.empty()) sentences += "; ";
  sentences += sentence;
}

std::vector<std::string_view> Split(std::string_view text, char separator) {
  std::vector<std::string_view> pieces;
  std::size_t start = 0;
  for (std::size_t found = 0; (found = text.find(separator, start)) != std::string_view::npos; start = found + 1) {
    pieces.push_back(text.substr(start, found - start));
  }
  pieces.push_back(text.substr(start));
  return pieces;
}

std::optional<std::int32_t> ParseInteger(std::string_view text) {
  if (text.size() > 1 && text.front() == '+' && text[1] != '-') text.remove_prefix(1);
  std::int32_t value = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
  if (error != std::errc() || end != text.data() + text.size()) return std::nullopt;
  return value;
}

std::size_t CountColumns(std::string_view text) {
  std::size_t columns = 0;
  for (std::size_t position = 0; position < text.size();) columns += ColumnsOf(NextCodePoint(text, position));
  return columns;
}

std::string_view FirstColumns(std::string_view text, std::size_t columns) {
  std::size_t taken = 0;
  for (std::size_t position = 0; position < text.size();) {
    const std::size_t start = position;
    taken += ColumnsOf(NextCodePoint(text, position));
    if (taken > columns) return text.substr(0, start);
  }
  return text;
}

std::string CutToColumns(std::string_view text, std::size_t columns) {
  if (FirstColumns(text, columns).size() == text.size()) return std::string(text);
  return std::string(FirstColumns(text, columns - std::min<std::size_t>(columns, 1))) + (columns > 0 ? "…" : "");
}

std::vector<std::string> WrapAtWords(std::string_view text, std::size_t columns) {
  std::vector<std::string> lines;
  for (std::string_view line : Split(text, '\n')) {
    do {
      const Break at = BreakOf(line, columns);
      lines.emplace_back(line.substr(0, at.end));
      line.remove_prefix(at.next);
    } while (!line.empty());
  }
  return lines;
}

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
