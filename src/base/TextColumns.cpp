#include "base/TextColumns.h"

#include <utf8proc.h>

#include <algorithm>

#include "base/Text.h"

namespace tolvan {
namespace {

constexpr char32_t firstLoneByte = 0xDC80;
constexpr char32_t lastLoneByte = 0xDCFF;

std::size_t ColumnsOf(char32_t character) {
  if (character >= firstLoneByte && character <= lastLoneByte) return 1;
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
  // A blank right behind what fits is a good place too.
  const std::size_t blank = text.rfind(' ', fits);
  if (blank != std::string_view::npos && blank > words) {
    const std::size_t end = text.find_last_not_of(' ', blank) + 1;
    return {end, std::min(text.find_first_not_of(' ', blank), text.size())};
  }
  if (fits == 0) NextCodePoint(text, fits);  // a wide character on a line of one column
  return {fits, fits};
}

}  // namespace

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

}  // namespace tolvan
