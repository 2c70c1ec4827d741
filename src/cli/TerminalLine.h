#pragma once

#include <chrono>
#include <iosfwd>
#include <string>
#include <string_view>

namespace tolvan {

/// One line of a terminal that is written over and over, at most ten times a second.
class TerminalLine {
 public:
  /// `out` must outlive this object.
  explicit TerminalLine(std::ostream& out) : out_(&out) {}

  /// Starts the time that Seconds counts, and the wait for the first drawing: what is over at once is not drawn.
  void Begin();

  /// Whether it is time to draw again; when it is, the caller does.
  bool Due();
  void Draw(std::string_view text);

  /// Takes away what was drawn.
  void Clear();

  /// Since Begin.
  double Seconds() const;

 private:
  using Moment = std::chrono::steady_clock::time_point;

  std::ostream* out_;
  Moment began_;
  Moment drawn_;
  bool hasDrawn_ = false;
};

/// "quedan 2 min 5 s": the time that the rest takes at the pace so far. `share` is what is done, above 0 and up to 1.
std::string TimeLeft(double secondsPassed, double share);

}  // namespace tolvan
