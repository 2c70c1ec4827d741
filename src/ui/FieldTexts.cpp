#include "ui/FieldTexts.h"

#include <algorithm>
#include <vector>

#include "base/NumberText.h"
#include "base/Text.h"

namespace tolvan {
namespace {

/// The numbers between separators; nothing when a piece is anything but digits, at most `longest` of them.
std::optional<std::vector<int>> NumbersOf(std::string_view text, std::string_view separators, std::size_t longest) {
  std::string plain(TrimBlanks(text));
  for (char& each : plain) {
    if (separators.find(each) != std::string_view::npos) each = separators.front();
  }
  std::vector<int> numbers;
  for (const std::string_view piece : Split(plain, separators.front())) {
    const bool digits = std::all_of(piece.begin(), piece.end(), [](char each) { return each >= '0' && each <= '9'; });
    if (!digits || piece.empty() || piece.size() > longest) return std::nullopt;
    numbers.push_back(*ParseInteger(piece));
  }
  return numbers;
}

}  // namespace

std::string DateText(Date date) {
  return PaddedNumber(date.Day(), 2) + "/" + PaddedNumber(date.Month(), 2) + "/" + PaddedNumber(date.Year(), 4);
}

std::optional<Date> ParseDateText(std::string_view text) {
  constexpr int firstYear = 1900;
  const auto parts = NumbersOf(text, "/-.", 4);
  if (!parts || parts->size() != 3) return std::nullopt;
  const int typed = parts->at(2);
  const int year = typed < 100 ? 2000 + typed : typed;
  if (year < firstYear) return std::nullopt;
  return Date::FromExactParts(year, parts->at(1), parts->at(0));
}

std::string TimeText(TimeOfDay time) {
  return PaddedNumber(time.hour, 2) + ":" + PaddedNumber(time.minute, 2);
}

std::optional<TimeOfDay> ParseTimeText(std::string_view text) {
  const auto parts = NumbersOf(text, ":.", 2);
  if (!parts || parts->size() > 2) return std::nullopt;
  const TimeOfDay time{.hour = parts->front(), .minute = parts->size() == 2 ? parts->back() : 0};
  if (time.hour > 23 || time.minute > 59) return std::nullopt;
  return time;
}

TimeOfDay Moved(TimeOfDay time, int minutes) {
  constexpr int day = 24 * 60;
  const int moved = ((time.hour * 60 + time.minute + minutes) % day + day) % day;
  return {.hour = moved / 60, .minute = moved % 60};
}

}  // namespace tolvan
