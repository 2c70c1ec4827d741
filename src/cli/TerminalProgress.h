// Progress on a terminal, in one line that is written over: what the component counts, and what the importers say.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <utility>

#include "cli/Terminal.h"
#include "host/UserInterface.h"
#include "services/clsCallBackProgreso.h"

namespace tolvan {

/// "quedan 2 min 5 s": the time that the rest takes at the pace so far. `share` is what is done, above 0 and up to 1.
std::string TimeLeft(double secondsPassed, double share);

/// A bar with the pace and the time left. Every step may be reported to it.
class TerminalProgress : public ProgressContainer, public ProgressBar, public ProgressCaption {
 public:
  /// `steps` counts the `unitName` ("líneas") that have been done; when it is empty, the bar's value does. `out` must
  /// outlive this object.
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

/// The importers' status: a text with counts and the time left.
class TerminalStatus : public StatusWindow {
 public:
  /// `shown` false shows nothing. `out` must outlive this object.
  TerminalStatus(std::ostream& out, TerminalColumns columns, bool shown)
      : out_(&out), columns_(std::move(columns)), shown_(shown) {}

  std::unique_ptr<StatusDisplay> OpenStatus() override;

 private:
  std::ostream* out_;
  TerminalColumns columns_;
  bool shown_;
};

}  // namespace tolvan
