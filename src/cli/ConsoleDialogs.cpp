#include "cli/ConsoleDialogs.h"

#include <istream>
#include <ostream>

#include "base/Text.h"

namespace tolvan {

std::string ForTerminal(std::string_view text) {
  const std::string plain = ReplaceAll(text, "\r\n", "\n");
  const std::size_t first = plain.find_first_not_of('\n');
  if (first == std::string::npos) return {};
  return plain.substr(first, plain.find_last_not_of('\n') - first + 1);
}

void ConsoleDialogs::ShowMessage(MessageIcon, std::string_view, std::string_view text) {
  *messages_ << ForTerminal(text) << '\n';
}

bool ConsoleDialogs::AskYesNo(std::string_view, std::string_view text, bool defaultYes) {
  if (assumeYes_) return true;
  if (!userPresent_) return defaultYes;
  *messages_ << ForTerminal(text) << " [s/N] " << std::flush;
  std::string answer;
  if (!std::getline(*input_, answer)) return false;
  return ToLower(FirstCharacters(answer, 1)) == "s";
}

std::optional<std::string> ConsoleDialogs::AskText(std::string_view, std::string_view prompt,
                                                   std::string_view initial) {
  if (!userPresent_) return std::nullopt;
  *messages_ << ForTerminal(prompt);
  if (!initial.empty()) *messages_ << " [" << initial << ']';
  *messages_ << ": " << std::flush;
  std::string answer;
  if (!std::getline(*input_, answer)) return std::nullopt;
  return answer.empty() ? std::string(initial) : answer;
}

// The command names its files on the command line; there is nothing to pick.
std::optional<std::string> ConsoleDialogs::PickFileToOpen(std::string_view, std::string_view) {
  return std::nullopt;
}
std::optional<std::string> ConsoleDialogs::PickFileToSave(std::string_view, std::string_view, std::string_view) {
  return std::nullopt;
}
std::optional<std::string> ConsoleDialogs::PickFolder(std::string_view, std::string_view) {
  return std::nullopt;
}

}  // namespace tolvan
