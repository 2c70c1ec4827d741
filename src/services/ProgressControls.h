// The controls that a progress callback drives, as far as it needs them. A window wraps its own controls; the command
// wraps a terminal. Every call may throw: the callback ignores it.
#pragma once

#include <cstdint>
#include <string_view>

namespace tolvan {

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

}  // namespace tolvan
