// The parts of a host that a test sets by hand.
#pragma once

#include <string>
#include <vector>

#include "host/Clock.h"
#include "host/Dialogs.h"
#include "host/Interruption.h"

namespace tolvan::test {

class SetClock final : public Clock {
 public:
  DateTime Now() const override { return now; }
  DateTime now{Date::FromParts(2024, 3, 1), 8, 30, 5};
};

class SetInterruption final : public Interruption {
 public:
  bool Requested() const noexcept override { return requested; }
  bool requested = false;
};

/// Answers AskText with one text after the other, then cancels.
class ScriptedDialogs final : public Dialogs {
 public:
  void ShowMessage(MessageIcon, std::string_view, std::string_view text) override { shown.emplace_back(text); }
  bool AskYesNo(std::string_view, std::string_view, bool defaultYes) override { return defaultYes; }
  std::optional<std::string> AskText(std::string_view, std::string_view prompt, std::string_view) override {
    shown.emplace_back(prompt);
    if (answers.empty()) return std::nullopt;
    std::string answer = answers.front();
    answers.erase(answers.begin());
    return answer;
  }
  std::optional<std::string> PickFileToOpen(std::string_view, std::string_view) override { return std::nullopt; }
  std::optional<std::string> PickFileToSave(std::string_view, std::string_view, std::string_view) override {
    return std::nullopt;
  }
  std::optional<std::string> PickFolder(std::string_view, std::string_view) override { return std::nullopt; }

  std::vector<std::string> shown;
  std::vector<std::string> answers;
};

}  // namespace tolvan::test
