#include "base/CsvText.h"

#include <algorithm>
#include <array>

#include "base/Text.h"

namespace tolvan {
namespace {

constexpr std::string_view apostrophe = "'";

// Also in full width, as East Asian keyboards write them.
constexpr std::array<std::string_view, 8> formulaSigns{"=", "+", "-", "@", "＝", "＋", "－", "＠"};
constexpr std::array<std::string_view, 2> blanks{" ", "\u00A0"};
// Between two cells where a spreadsheet takes another separator than the comma, and between two lines.
constexpr std::string_view separators = ";\t\r\n";

std::string_view WithoutBlanks(std::string_view text) {
  for (const std::string_view blank : blanks) {
    if (text.starts_with(blank)) return WithoutBlanks(text.substr(blank.size()));
  }
  return text;
}

bool BeginsFormula(std::string_view text) {
  const std::string_view shown = WithoutBlanks(text);
  return std::any_of(formulaSigns.begin(), formulaSigns.end(),
                     [&](std::string_view sign) { return shown.starts_with(sign); });
}

std::string Harmless(std::string_view text) {
  std::string harmless;
  if (!text.empty() && separators.substr(1).find(text.front()) != std::string_view::npos) harmless += apostrophe;
  bool cellBegins = true;
  for (std::size_t place = 0; place < text.size(); ++place) {
    if (cellBegins && BeginsFormula(text.substr(place))) harmless += apostrophe;
    harmless += text[place];
    cellBegins = separators.find(text[place]) != std::string_view::npos;
  }
  return harmless;
}

}  // namespace

std::string CsvText(std::string_view text) {
  std::string field = Harmless(text);
  if (field.find_first_of(",\"\r\n") == std::string::npos) return field;
  return '"' + ReplaceAll(field, "\"", "\"\"") + '"';
}

}  // namespace tolvan
