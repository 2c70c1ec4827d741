// The host of a benchmark: nobody looks, and nobody interrupts.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "host/UserInterface.h"

namespace tolvan::bench {

class NoDialogs final : public Dialogs {
  using Text = std::string_view;

 public:
  void ShowMessage(MessageIcon, Text, Text) override {}
  bool AskYesNo(Text, Text, bool defaultYes) override { return defaultYes; }
  std::optional<std::string> AskText(Text, Text, Text) override { return {}; }
  std::optional<std::string> PickFileToOpen(Text, Text) override { return {}; }
  std::optional<std::string> PickFileToSave(Text, Text, Text) override { return {}; }
  std::optional<std::string> PickFolder(Text, Text) override { return {}; }
};

class NoInterruption final : public Interruption {
 public:
  bool Requested() const noexcept override { return false; }
};

}  // namespace tolvan::bench
