#pragma once

#include <chrono>
#include <iosfwd>
#include <string>
#include <string_view>
#include <utility>

#include "cli/TerminalColumns.h"

namespace tolvan {

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

/// "quedan 2 min 5 s": the time that the rest takes at the pace so far. `share` is what is done, above 0 and up to 1.
std::string TimeLeft(double secondsPassed, double share);

}  // namespace tolvan
