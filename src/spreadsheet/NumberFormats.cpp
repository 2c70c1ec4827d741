#include "spreadsheet/NumberFormats.h"

#include <algorithm>

#include "spreadsheet/WorkbookFailure.h"
#include "spreadsheet/WorkbookLimits.h"

namespace tolvan {
namespace {

/// What stands between "[" and "]": elapsed hours, minutes or seconds are a date, the rest decoration.
bool IsElapsedTime(std::string_view bracket) {
  if (bracket.empty()) return false;
  const char unit = static_cast<char>(bracket[0] | 0x20);
  if (unit != 'h' && unit != 'm' && unit != 's') return false;
  return std::all_of(bracket.begin(), bracket.end(), [unit](char c) { return (c | 0x20) == unit; });
}

// Source: ECMA-376, 18.8.30, with the East Asian and Thai numbers that are dates in every language.
bool IsBuiltInDate(std::uint32_t formatId) {
  return (formatId >= 14 && formatId <= 22) || (formatId >= 27 && formatId <= 36) ||
         (formatId >= 45 && formatId <= 47) || (formatId >= 50 && formatId <= 58) || (formatId >= 71 && formatId <= 81);
}

bool IsGeneral(std::string_view section) {
  constexpr std::string_view general = "general";
  return section.size() >= general.size() &&
         std::equal(general.begin(), general.end(), section.begin(), [](char a, char b) { return a == (b | 0x20); });
}

}  // namespace

bool ShowsDate(std::string_view code) {
  for (std::size_t i = 0; i < code.size() && code[i] != ';'; ++i) {
    switch (code[i]) {
      case '"':
        i = std::min(code.find('"', i + 1), code.size());
        break;
      case '\\':
      case '_':
      case '*':
        ++i;  // the next character is shown, or gives a width, as it is
        break;
      case '[': {
        const std::size_t end = std::min(code.find(']', i), code.size());
        if (IsElapsedTime(code.substr(i + 1, end - i - 1))) return true;
        i = end;
        break;
      }
      case 'G':
      case 'g':
        if (IsGeneral(code.substr(i))) i += 6;
        break;
      default:
        if (std::string_view("dDmMyYhHsS").find(code[i]) != std::string_view::npos) return true;
    }
  }
  return false;
}

void CellFormats::DefineFormat(std::uint32_t formatId, std::string_view code) {
  if (defined_.size() >= limits::maximumListEntries) FailTooBig("la cantidad de formatos");
  defined_[formatId] = ShowsDate(code);
}

void CellFormats::AddCellFormat(std::uint32_t formatId) {
  if (isDate_.size() >= limits::maximumListEntries) FailTooBig("la cantidad de formatos");
  const auto found = defined_.find(formatId);
  isDate_.push_back((found != defined_.end() ? found->second : IsBuiltInDate(formatId)) ? 1 : 0);
}

}  // namespace tolvan
