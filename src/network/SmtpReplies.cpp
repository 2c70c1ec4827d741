#include "network/SmtpReplies.h"

#include <algorithm>

#include "base/Text.h"

namespace tolvan {
namespace {

constexpr std::size_t numberLength = 3;
constexpr std::size_t mostCharacters = 500;

std::string ForPeople(std::string_view line) {
  std::string text = IsValidUtf8(line) ? std::string(line) : FromWindows1252(line);
  std::erase_if(text, [](char character) { return static_cast<unsigned char>(character) < 0x20; });
  return text;
}

}  // namespace

void SmtpReplies::Add(std::string_view line) {
  const std::string text = ForPeople(line);
  if (complete_) {
    current_ = text;
  } else if (current_.size() < mostCharacters) {
    // The number stands before every line of a reply; once is enough.
    current_.append(" ").append(text.substr(std::min(numberLength + 1, text.size())));
  }
  complete_ = text.size() <= numberLength || text[numberLength] != '-';
  const bool refuses = current_.starts_with('4') || current_.starts_with('5');
  if (complete_ && refuses) refusal_ = FirstCharacters(current_, mostCharacters);
}

}  // namespace tolvan
