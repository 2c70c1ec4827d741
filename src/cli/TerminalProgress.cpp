#include "cli/TerminalProgress.h"

#include <algorithm>
#include <cmath>
#include <ostream>

namespace tolvan {
namespace {

using std::chrono::steady_clock;

constexpr auto betweenDrawings = std::chrono::milliseconds(100);
constexpr std::size_t barWidth = 20;
constexpr const char* clearLine = "\r\x1B[K";

std::string TimeText(double seconds) {
  const std::int64_t whole = std::llround(seconds);
  if (whole < 60) return std::to_string(whole) + " s";
  return std::to_string(whole / 60) + " min " + std::to_string(whole % 60) + " s";
}

}  // namespace

TerminalProgress::TerminalProgress(std::ostream& out, std::function<std::int64_t()> steps, std::string unitName)
    : out_(&out), steps_(std::move(steps)), unitName_(std::move(unitName)) {}

void TerminalProgress::SetVisible(bool visible) {
  if (visible && !visible_) began_ = drawn_ = steady_clock::now();
  if (!visible && hasDrawn_) *out_ << clearLine << std::flush;
  visible_ = visible;
  hasDrawn_ = false;
}

void TerminalProgress::SetValue(std::int32_t value) {
  const Moment now = steady_clock::now();
  if (!visible_ || maximum_ <= 0 || now - drawn_ < betweenDrawings) return;
  drawn_ = now;
  hasDrawn_ = true;
  *out_ << clearLine << Line(value, std::chrono::duration<double>(now - began_).count()) << std::flush;
}

std::string TerminalProgress::Line(std::int32_t value, double seconds) const {
  const double share = std::clamp(static_cast<double>(value) / maximum_, 0.0, 1.0);
  const auto filled = static_cast<std::size_t>(share * barWidth);
  std::string line = caption_ + " [" + std::string(filled, '#') + std::string(barWidth - filled, '.') + "] " +
                     std::to_string(static_cast<int>(share * 100)) + " %";
  const std::int64_t steps = steps_();
  line += ", " + std::to_string(steps) + " " + unitName_;
  if (seconds > 0) {
    line += ", " + std::to_string(static_cast<std::int64_t>(static_cast<double>(steps) / seconds)) + " por segundo";
  }
  if (share > 0) line += ", quedan " + TimeText(seconds / share - seconds);
  return line;
}

}  // namespace tolvan
