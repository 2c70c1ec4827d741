// Message boxes and questions on a terminal: texts go to standard error, answers come from standard input, and only
// where a person sits at it.
#pragma once

#include <iosfwd>

#include "host/UserInterface.h"

namespace tolvan {

class ConsoleDialogs : public Dialogs {
 public:
  /// `userPresent`: standard input is a terminal. `assumeYes` answers every question with yes.
  ConsoleDialogs(std::istream& input, std::ostream& messages, bool userPresent, bool assumeYes)
      : input_(&input), messages_(&messages), userPresent_(userPresent), assumeYes_(assumeYes) {}

  void ShowMessage(MessageIcon icon, std::string_view title, std::string_view text) override;
  /// A person has to say yes, whatever the default is; that is the answer where nobody can be asked.
  bool AskYesNo(std::string_view title, std::string_view text, bool defaultYes) override;
  std::optional<std::string> AskText(std::string_view title, std::string_view prompt,
                                     std::string_view initial) override;
  std::optional<std::string> PickFileToOpen(std::string_view title, std::string_view filter) override;
  std::optional<std::string> PickFileToSave(std::string_view title, std::string_view filter,
                                            std::string_view defaultName) override;
  std::optional<std::string> PickFolder(std::string_view title, std::string_view initial) override;

  bool UserPresent() const { return userPresent_; }

 private:
  std::istream* input_;
  std::ostream* messages_;
  bool userPresent_;
  bool assumeYes_;
};

/// A component's text for a terminal: CR LF becomes LF, line ends at both ends are dropped.
std::string ForTerminal(std::string_view text);

}  // namespace tolvan
