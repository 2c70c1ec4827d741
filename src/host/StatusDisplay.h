// The small display that a long operation puts over the window that started it.
#pragma once

#include <cstdint>
#include <memory>
#include <string_view>

namespace tolvan {

/// Is shown from its creation until it is destroyed. It never fails towards its caller.
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

}  // namespace tolvan
