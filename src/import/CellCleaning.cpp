#include "import/CellCleaning.h"

#include "base/Text.h"

namespace tolvan {
namespace {

std::string Without(std::string_view text, std::string_view characters) {
  std::string kept;
  kept.reserve(text.size());
  for (const char c : text) {
    if (characters.find(c) == std::string_view::npos) kept += c;
  }
  return kept;
}

}  // namespace

std::string CleanCode(std::string_view text, std::size_t length) {
  return ToUpper(FirstCharacters(Without(TrimBlanks(text), " \r\n"), length));
}

std::string CleanDescription(std::string_view text, std::size_t length) {
  const std::string single = ReplaceAll(ToUpper(TrimBlanks(text)), "  ", " ");
  return ToUpper(FirstCharacters(Without(TrimBlanks(single), "-/.\r\n"), length));
}

std::string CleanModelCode(std::string_view text) {
  return ToUpper(FirstCharacters(Without(TrimBlanks(text), " -/."), shortCodeLength));
}

}  // namespace tolvan
