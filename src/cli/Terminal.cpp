#include "cli/Terminal.h"

#include <sys/ioctl.h>
#include <unistd.h>

#include <istream>
#include <ostream>

#include "base/Text.h"

namespace tolvan {
namespace {

using std::chrono::steady_clock;

constexpr auto betweenDrawings = std::chrono::milliseconds(100);

std::optional<std::size_t> Ask(int descriptor) {
  if (isatty(descriptor) == 0) return std::nullopt;
  winsize size{};
  if (ioctl(descriptor, TIOCGWINSZ, &size) != 0 || size.ws_col == 0) return usualColumns;
  return size.ws_col;
}

}  // namespace

TerminalColumns ColumnsOfDescriptor(int descriptor) {
  return [descriptor] { return Ask(descriptor); };
}

std::size_t ColumnsForText(const TerminalColumns& terminal) {
  return terminal ? terminal().value_or(usualColumns) : usualColumns;
}

std::string ForTerminal(std::string_view text) {
  const std::string plain = ReplaceAll(text, "\r\n", "\n");
  const std::size_t first = plain.find_first_not_of('\n');
  if (first == std::string::npos) return {};
  return plain.substr(first, plain.find_last_not_of('\n') - first + 1);
}

void TerminalLine::Begin() {
  began_ = drawn_ = steady_clock::now();
}

bool TerminalLine::Due() {
  const Moment now = steady_clock::now();
  if (now - drawn_ < betweenDrawings) return false;
  drawn_ = now;
  return true;
}

void TerminalLine::Draw(std::string_view text) {
  hasDrawn_ = true;
  *out_ << clearLine << CutToColumns(text, Room()) << std::flush;
}

void TerminalLine::Clear() {
  if (hasDrawn_) *out_ << clearLine << std::flush;
  hasDrawn_ = false;
}

double TerminalLine::Seconds() const {
  return std::chrono::duration<double>(steady_clock::now() - began_).count();
}

void ConsoleDialogs::ShowMessage(MessageIcon, std::string_view, std::string_view text) {
  *messages_ << ForTerminal(text) << '\n';
}

bool ConsoleDialogs::AskYesNo(std::string_view, std::string_view text, bool defaultYes) {
  if (assumeYes_) return true;
  if (!userPresent_) return defaultYes;
  *messages_ << ForTerminal(text) << " [s/N] " << std::flush;
  return ToLower(FirstCharacters(Answer().value_or(""), 1)) == "s";
}

std::optional<std::string> ConsoleDialogs::AskText(std::string_view, std::string_view prompt,
                                                   std::string_view initial) {
  if (!userPresent_) return std::nullopt;
  *messages_ << ForTerminal(prompt);
  if (!initial.empty()) *messages_ << " [" << initial << ']';
  *messages_ << ": " << std::flush;
  const std::optional<std::string> answer = Answer();
  return answer && answer->empty() ? std::string(initial) : answer;
}

std::optional<std::string> ConsoleDialogs::Answer() {
  std::string answer;
  if (std::getline(*input_, answer)) return answer;
  *messages_ << '\n';  // nobody has ended the line of the question
  return std::nullopt;
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
