// What the system gives the process: its standard streams, and the signals by which a user ends it.
#pragma once

#include <array>
#include <iosfwd>
#include <streambuf>
#include <string>
#include <utility>

#include "cli/Terminal.h"
#include "host/UserInterface.h"

namespace tolvan {

/// Opens /dev/null on each standard descriptor that the caller has closed. Else a file of ours would take its number,
/// and what is meant for the stream.
void OccupyStandardDescriptors();

/// The buffer of standard output. A reader that goes away ("| head") is no failure: nobody wants the rest, so it is
/// dropped and the work goes on.
class DescriptorBuffer final : public std::streambuf {
 public:
  /// The descriptor stays its owner's. SIGPIPE must be ignored. What is left at the end is not written: flush before.
  explicit DescriptorBuffer(int descriptor) : descriptor_(descriptor) { setp(bytes_.begin(), bytes_.end()); }

  /// The error number of the write that failed, after which nothing is written; 0 when none did.
  int ErrorNumber() const { return errorNumber_; }

 private:
  int_type overflow(int_type character) override;
  int sync() override;

  void TakeError(int errorNumber);

  int descriptor_;
  int errorNumber_ = 0;
  bool readerIsGone_ = false;
  std::array<char, 1 << 16> bytes_{};
};

/// The buffer of standard error. Where a terminal shows it, lines are broken at blanks to its width as it is at that
/// moment; a word that is longer than a line stays whole, so that a path can be copied. Elsewhere every byte goes on as
/// it came. A line is passed on when it ends, and what is left of one when the stream is flushed.
class MessageBuffer final : public std::streambuf {
 public:
  /// `to` must outlive the buffer.
  MessageBuffer(std::streambuf& to, TerminalColumns columns) : to_(&to), columns_(std::move(columns)) {}
  ~MessageBuffer() override { PassOn(); }
  MessageBuffer(const MessageBuffer&) = delete;
  MessageBuffer& operator=(const MessageBuffer&) = delete;

 private:
  int_type overflow(int_type character) override;
  int sync() override;

  bool PassOn();

  std::streambuf* to_;
  TerminalColumns columns_;
  std::string line_;
};

/// The user's wish to stop, made known by SIGINT (Ctrl-C), SIGTERM or SIGHUP (the terminal was closed). One object per
/// process: it installs the handlers. A second signal of the first two kinds ends the process at once, for a user who
/// does not want to wait.
class SignalInterruption : public Interruption {
 public:
  /// Waits are reported on `messages`, which must outlive the object. `drawsThere`: an unfinished line may stand
  /// there, and is taken away.
  SignalInterruption(std::ostream& messages, bool drawsThere);
  bool Requested() const noexcept override;
  void WaitBegins(std::string_view text) const noexcept override;

 private:
  std::ostream& messages_;
  bool drawsThere_;
  mutable std::string lastWait_;  // many short waits for the same are reported once
};

}  // namespace tolvan
