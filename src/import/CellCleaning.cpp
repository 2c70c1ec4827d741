#include "import/CellCleaning.h"

#include <utility>

#include "base/Text.h"

namespace tolvan {
namespace {

template <char... dropped>
std::string Without(std::string text) {
  std::erase_if(text, [](char c) { return ((c == dropped) || ...); });
  return text;
}

}  // namespace

std::string CleanCode(std::string_view text, std::size_t length) {
  return ToUpper(FirstCharacters(Without<' ', '\r', '\n'>(std::string(text)), length));
}

std::string CleanDescription(std::string_view text, std::size_t length) {
  std::string single = ReplaceAll(TrimBlanks(text), "  ", " ");
  return ToUpper(FirstCharacters(Without<'-', '/', '.', '\r', '\n'>(std::move(single)), length));
}

std::string CleanModelCode(std::string_view text) {
  return ToUpper(FirstCharacters(Without<' ', '-', '/', '.'>(std::string(text)), shortCodeLength));
}

}  // namespace tolvan
