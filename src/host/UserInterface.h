// How the component meets its user: modal boxes that ask and say, the small display of a long operation, and the wish
// to stop one. Texts are UTF-8 with CR LF between lines. Where nobody can be asked, questions answer their default and
// pickers give nothing.
#pragma once

#include <chrono>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace tolvan {

enum class MessageIcon { None, Information, Exclamation };

/// What the component asks of the user in modal boxes.
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

/// The small display that a long operation puts over the window that started it. It is shown from its creation until
/// it is destroyed, and never fails towards its caller.
class StatusDisplay {
 public:
  virtual ~StatusDisplay() = default;

  virtual void SetText(std::string_view text) = 0;

  /// Shows a bar from 0 to `maximum`, standing at 0. Without it there is only the text.
  virtual void SetRange(std::int32_t maximum) = 0;

  /// Moves the bar by one; at its end nothing happens.
  virtual void Advance() = 0;
};

/// A window that status displays can be put over.
class StatusWindow {
 public:
  virtual ~StatusWindow() = default;

  /// Never null. The window must outlive the display.
  virtual std::unique_ptr<StatusDisplay> OpenStatus() = 0;
};

/// The user in front of running work, as the code at work sees them: whether they want it stopped, and what they must
/// know while it waits for somebody else. Everything but the first is for the waits of providers; see system/Waiting.h.
class Interruption {
 public:
  virtual ~Interruption() = default;

  /// Whether the user asked that the running work stop. Long loops ask it at every step and stop as after a failure.
  virtual bool Requested() const noexcept = 0;

  /// The work is waiting, for longer than goes unnoticed. `text` is a sentence for people that says for whom; it is
  /// shown until WaitEnds. Waits do not nest.
  virtual void WaitBegins(std::string_view /*text*/) const noexcept {}
  virtual void WaitEnds() const noexcept {}

  /// Between WaitBegins and WaitEnds: answers the user for that long. False where there is nothing to answer; then it
  /// returned at once.
  virtual bool AnswerFor(std::chrono::milliseconds /*time*/) const noexcept { return false; }
};

}  // namespace tolvan
