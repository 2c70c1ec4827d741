#include "cli/TerminalProgress.h"

#include <algorithm>

namespace tolvan {
namespace {

constexpr std::size_t barWidth = 20;

}  // namespace

TerminalProgress::TerminalProgress(std::ostream& out, std::function<std::int64_t()> steps, std::string unitName)
    : line_(out), steps_(std::move(steps)), unitName_(std::move(unitName)) {}

void TerminalProgress::SetVisible(bool visible) {
  if (visible && !visible_) line_.Begin();
  if (!visible) line_.Clear();
  visible_ = visible;
}

void TerminalProgress::SetValue(std::int32_t value) {
  if (visible_ && maximum_ > 0 && line_.Due()) line_.Draw(Line(value));
}

std::string TerminalProgress::Line(std::int32_t value) const {
  const double share = std::clamp(static_cast<double>(value) / maximum_, 0.0, 1.0);
  const double seconds = line_.Seconds();
  const auto filled = static_cast<std::size_t>(share * barWidth);
  std::string line = caption_ + " [" + std::string(filled, '#') + std::string(barWidth - filled, '.') + "] " +
                     std::to_string(static_cast<int>(share * 100)) + " %";
  const std::int64_t steps = steps_ ? steps_() : value;
  line += ", " + std::to_string(steps) + " " + unitName_;
  if (seconds > 0) {
    line += ", " + std::to_string(static_cast<std::int64_t>(static_cast<double>(steps) / seconds)) + " por segundo";
  }
  if (share > 0) line += ", " + TimeLeft(seconds, share);
  return line;
}

}  // namespace tolvan
