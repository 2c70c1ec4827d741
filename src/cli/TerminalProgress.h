// Progress on a terminal: a line with a bar, the pace and the time left. It may be told every step.
#pragma once

#include <cstdint>
#include <functional>
#include <string>

#include "cli/TerminalLine.h"
#include "services/ProgressControls.h"

namespace tolvan {

class TerminalProgress : public ProgressContainer, public ProgressBar, public ProgressCaption {
 public:
  /// `steps` tells how many `unitName` ("líneas") have been done; when empty, the bar's value does. `out` must outlive
  /// this object.
  TerminalProgress(std::ostream& out, TerminalColumns columns, std::function<std::int64_t()> steps,
                   std::string unitName);

  void SetVisible(bool visible) override;
  void SetMin(std::int32_t) override {}
  void SetValue(std::int32_t value) override;
  void SetMax(std::int32_t maximum) override { maximum_ = maximum; }
  std::int32_t Max() const override { return maximum_; }
  void SetCaption(std::string_view text) override { caption_ = text; }

 private:
  std::string Line(std::int32_t value) const;

  TerminalLine line_;
  std::function<std::int64_t()> steps_;
  std::string unitName_;
  std::string caption_;
  std::int32_t maximum_ = 0;
  bool visible_ = false;
};

}  // namespace tolvan
