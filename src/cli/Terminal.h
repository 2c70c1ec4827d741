// The terminal at which a person sits: how wide it is, a line of it that is written over and over, and questions.
#pragma once

#include <chrono>
#include <cstddef>
#include <functional>
#include <iosfwd>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "host/UserInterface.h"

namespace tolvan {

/// The columns of the terminal that shows a stream, asked again at every call, so that a change is followed; nothing
/// where no terminal shows it. May be empty, which says the same.
using TerminalColumns = std::function<std::optional<std::size_t>()>;

/// What texts are made for where nobody knows better.
inline constexpr std::size_t usualColumns = 80;

/// Of the terminal that a file descriptor leads to.
TerminalColumns ColumnsOfDescriptor(int descriptor);

/// What running text is wrapped to: the terminal's columns, else the usual ones.
std::size_t ColumnsForText(const TerminalColumns& terminal);

/// Moves to the beginning of the line and clears it.
inline constexpr std::string_view clearLine = "\r\x1B[K";

/// A component's text for a terminal: CR LF becomes LF, line ends at both ends are dropped.
std::string ForTerminal(std::string_view text);

/// One line of a terminal that is written over and over, at most ten times a second. It never takes more than one: what
/// does not fit the terminal's width, as it is at that moment, is cut off.
class TerminalLine {
 public:
  /// `out` must outlive this object.
  TerminalLine(std::ostream& out, TerminalColumns columns) : out_(&out), columns_(std::move(columns)) {}
  ~TerminalLine() { Clear(); }
  TerminalLine(const TerminalLine&) = delete;
  TerminalLine& operator=(const TerminalLine&) = delete;

  /// Starts the time that Seconds counts, and the wait for the first drawing: what is over at once is not drawn.
  void Begin();

  /// Whether it is time to draw again; when it is, the caller does.
  bool Due();
  void Draw(std::string_view text);

  /// The columns that a text may take now; the last one stays free, where some terminals would wrap.
  std::size_t Room() const { return ColumnsForText(columns_) - 1; }

  /// Takes away what was drawn.
  void Clear();

  /// Since Begin.
  double Seconds() const;

 private:
  using Moment = std::chrono::steady_clock::time_point;

  std::ostream* out_;
  TerminalColumns columns_;
  Moment began_;
  Moment drawn_;
  bool hasDrawn_ = false;
};

/// Message boxes and questions on a terminal: texts go to standard error, answers come from standard input, and only
/// where a person sits at it.
class ConsoleDialogs : public Dialogs {
 public:
  /// `userPresent`: standard input is a terminal. `assumeYes` answers every question with yes.
  ConsoleDialogs(std::istream& input, std::ostream& messages, bool userPresent, bool assumeYes)
      : input_(&input), messages_(&messages), userPresent_(userPresent), assumeYes_(assumeYes) {}

  void ShowMessage(MessageIcon icon, std::string_view title, std::string_view text) override;
  /// A person has to say yes, whatever the default is; the default is the answer where nobody can be asked.
  bool AskYesNo(std::string_view title, std::string_view text, bool defaultYes) override;
  std::optional<std::string> AskText(std::string_view title, std::string_view prompt,
                                     std::string_view initial) override;
  std::optional<std::string> PickFileToOpen(std::string_view title, std::string_view filter) override;
  std::optional<std::string> PickFileToSave(std::string_view title, std::string_view filter,
                                            std::string_view defaultName) override;
  std::optional<std::string> PickFolder(std::string_view title, std::string_view initial) override;

  bool UserPresent() const { return userPresent_; }

 private:
  /// A line of the input; nothing when it has ended.
  std::optional<std::string> Answer();

  std::istream* input_;
  std::ostream* messages_;
  bool userPresent_;
  bool assumeYes_;
};

}  // namespace tolvan
