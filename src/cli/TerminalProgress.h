// Progress on a terminal: one line that is written over and over, with a bar, the pace and the time left. Draws at most
// ten times a second, so that it may be told every step.
#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <iosfwd>
#include <string>

#include "services/ProgressControls.h"

namespace tolvan {

class TerminalProgress : public ProgressContainer, public ProgressBar, public ProgressCaption {
 public:
  /// `steps` tells how many `unitName` ("líneas") have been done. `out` must outlive this object.
  TerminalProgress(std::ostream& out, std::function<std::int64_t()> steps, std::string unitName);

  void SetVisible(bool visible) override;
  void SetMin(std::int32_t) override {}
  void SetValue(std::int32_t value) override;
  void SetMax(std::int32_t maximum) override { maximum_ = maximum; }
  std::int32_t Max() const override { return maximum_; }
  void SetCaption(std::string_view text) override { caption_ = text; }

 private:
  using Moment = std::chrono::steady_clock::time_point;

  std::string Line(std::int32_t value, double seconds) const;

  std::ostream* out_;
  std::function<std::int64_t()> steps_;
  std::string unitName_;
  std::string caption_;
  std::int32_t maximum_ = 0;
  Moment began_;
  Moment drawn_;
  bool visible_ = false;
  bool hasDrawn_ = false;
};

}  // namespace tolvan
