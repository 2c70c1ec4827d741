// What the component asks of the user in modal boxes. Texts are UTF-8 with CR LF between lines. Where nobody can be
// asked, questions answer their default and pickers give nothing.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace tolvan {

enum class MessageIcon { None, Information, Exclamation };

class Dialogs {
 public:
  virtual ~Dialogs() = default;

  virtual void ShowMessage(MessageIcon icon, std::string_view title, std::string_view text) = 0;

  /// Yes is true. `defaultYes` is the answer of the button that has the focus.
  virtual bool AskYesNo(std::string_view title, std::string_view text, bool defaultYes) = 0;

  /// Nothing when the user cancels.
  virtual std::optional<std::string> AskText(std::string_view title, std::string_view prompt,
                                             std::string_view initial) = 0;

  /// `filter` is description, bar, pattern ("*.xls;*.xlsx"), possibly repeated. Nothing when the user cancels.
  virtual std::optional<std::string> PickFileToOpen(std::string_view title, std::string_view filter) = 0;
  virtual std::optional<std::string> PickFileToSave(std::string_view title, std::string_view filter,
                                                    std::string_view defaultName) = 0;

  /// Begins at `initial`; new folders may be made. Nothing when the user cancels.
  virtual std::optional<std::string> PickFolder(std::string_view title, std::string_view initial) = 0;
};

}  // namespace tolvan
