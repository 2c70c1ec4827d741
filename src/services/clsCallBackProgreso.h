// Through this object long operations report progress and log lines to whatever hosts them. It drives controls that it
// is given and does not own, and it never fails towards its caller. Used from one thread.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace tolvan {

// The controls that progress drives, as far as it needs them. A window wraps its own controls; the command wraps a
// terminal. Every call may throw: the callback ignores it.

/// The frame that holds the bar.
class ProgressContainer {
 public:
  virtual ~ProgressContainer() = default;
  virtual void SetVisible(bool visible) = 0;
};

class ProgressBar {
 public:
  virtual ~ProgressBar() = default;
  virtual void SetMin(std::int32_t minimum) = 0;
  virtual void SetValue(std::int32_t value) = 0;
  virtual void SetMax(std::int32_t maximum) = 0;
  virtual std::int32_t Max() const = 0;
};

class ProgressCaption {
 public:
  virtual ~ProgressCaption() = default;
  virtual void SetCaption(std::string_view text) = 0;
};

/// Whatever a log target wants to know about where its lines come from; handed through untouched.
class LogContext {
 public:
  virtual ~LogContext() = default;
};

class LogTarget {
 public:
  virtual ~LogTarget() = default;

  /// Appends a line. What `flag` selects is the target's own business; `context` may be null.
  virtual void AppendLog(std::string_view text, bool flag, LogContext* context) = 0;
};

/// One pass of the window's message loop.
class MessagePump {
 public:
  virtual ~MessagePump() = default;

  /// Long loops come here at every step, hundreds of thousands of times a second: an implementation returns at once
  /// when its last pass was a moment ago, and never starts a second action from within.
  virtual void ProcessPending() = 0;
};

class clsCallBackProgreso {
 public:
  /// `pump` is asked after every change of the bar's value; null where there are no messages to process.
  explicit clsCallBackProgreso(MessagePump* pump = nullptr) noexcept : pump_(pump) {}
  clsCallBackProgreso(const clsCallBackProgreso&) = delete;
  clsCallBackProgreso& operator=(const clsCallBackProgreso&) = delete;

  /// Hides the container when progress is still on.
  ~clsCallBackProgreso();

  /// Shows or hides the bar, sets its value and the caption. What equals the last report is not written again; a new
  /// maximum counts only when `active` changes; a value past the bar's maximum leaves the bar full.
  void NotificarProgreso(bool active, std::int32_t maximum, std::int32_t value, std::string_view text) noexcept;

  /// Binds the five references, any of which may be null, and hides the container. The controls must outlive this
  /// object or the next binding.
  void EstablecerControles(ProgressContainer* container, ProgressBar* bar, ProgressCaption* caption,
                           LogTarget* logTarget, LogContext* logContext) noexcept;

  /// Progress off, no text.
  void ApagarProgreso() noexcept;

  /// Appends a line to the log target; nothing without one.
  void AgregarLog(std::string_view text, bool flag) noexcept;

  /// Logs " ...OK" or " ...ERROR" and gives `ok` back, so that one statement logs and tests a step.
  bool LogOK(bool ok) noexcept;

 private:
  void ShowText(std::string_view text) noexcept;
  void ShowBar() noexcept;
  void SetVisible(bool visible) noexcept;
  void SetBarValue(std::int32_t value) noexcept;

  ProgressContainer* container_ = nullptr;
  ProgressBar* bar_ = nullptr;
  ProgressCaption* caption_ = nullptr;
  LogTarget* logTarget_ = nullptr;
  LogContext* logContext_ = nullptr;
  bool active_ = false;
  std::int32_t maximum_ = 0;
  std::int32_t current_ = 0;
  std::string lastText_;
  MessagePump* pump_;
};

}  // namespace tolvan
