#include "cli/Suggestion.h"

#include <algorithm>
#include <utility>

#include "base/Text.h"

namespace tolvan {
namespace {

/// How many letters are missing, added, changed or swapped with their neighbour.
std::size_t Distance(std::string_view left, std::string_view right) {
  std::vector<std::size_t> beforeLast(right.size() + 1);
  std::vector<std::size_t> last(right.size() + 1);
  std::vector<std::size_t> row(right.size() + 1);
  for (std::size_t column = 0; column <= right.size(); ++column) row[column] = column;
  for (std::size_t line = 1; line <= left.size(); ++line) {
    beforeLast = std::exchange(last, row);
    row[0] = line;
    for (std::size_t column = 1; column <= right.size(); ++column) {
      const std::size_t changed = left[line - 1] == right[column - 1] ? 0 : 1;
      row[column] = std::min({last[column] + 1, row[column - 1] + 1, last[column - 1] + changed});
      const bool swapped =
          line > 1 && column > 1 && left[line - 1] == right[column - 2] && left[line - 2] == right[column - 1];
      if (swapped) row[column] = std::min(row[column], beforeLast[column - 2] + 1);
    }
  }
  return row.back();
}

}  // namespace

std::string Listed(const std::vector<std::string>& choices) {
  std::string text = choices.front();
  for (std::size_t index = 1; index < choices.size(); ++index) {
    text += (index + 1 < choices.size() ? ", " : " o ") + choices[index];
  }
  return text;
}

std::string DidYouMean(std::string_view word, const std::vector<std::string>& known) {
  constexpr std::size_t shortestPart = 3;
  const std::string wanted = ToLower(word);
  std::size_t nearest = std::max<std::size_t>(1, wanted.size() / 3);
  std::vector<std::string> found;
  for (const std::string& candidate : known) {
    const std::string lower = ToLower(candidate);
    const bool contains = wanted.size() >= shortestPart && lower.find(wanted) != std::string::npos;
    const std::size_t distance = contains ? 0 : Distance(wanted, lower);
    if (distance > nearest) continue;
    if (distance < nearest) found.clear();
    nearest = distance;
    found.push_back(candidate);
  }
  return found.empty() ? std::string() : "; ¿quiso decir " + Listed(found) + "?";
}

std::string UnknownOrder(const std::string& word, const std::vector<std::string>& orders) {
  return "No existe la orden \"" + word + '"' + DidYouMean(word, orders);
}

}  // namespace tolvan
