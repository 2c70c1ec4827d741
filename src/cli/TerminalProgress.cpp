#include "cli/TerminalProgress.h"

#include <algorithm>

#include "base/TextColumns.h"

namespace tolvan {
namespace {

constexpr std::size_t barWidth = 20;

std::string Bar(double share) {
  const auto filled = static_cast<std::size_t>(share * barWidth);
  return '[' + std::string(filled, '#') + std::string(barWidth - filled, '.') + "] ";
}

}  // namespace

TerminalProgress::TerminalProgress(std::ostream& out, TerminalColumns columns, std::function<std::int64_t()> steps,
                                   std::string unitName)
    : line_(out, std::move(columns)), steps_(std::move(steps)), unitName_(std::move(unitName)) {}

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
  const std::int64_t steps = steps_ ? steps_() : value;
  std::string done = std::to_string(static_cast<int>(share * 100)) + " %, " + std::to_string(steps) + " " + unitName_;
  std::string pace;
  if (seconds > 0) {
    pace = ", " + std::to_string(static_cast<std::int64_t>(static_cast<double>(steps) / seconds)) + " por segundo";
  }
  const std::string left = share > 0 ? ", " + TimeLeft(seconds, share) : std::string();
  // Where there is no room, what can best be missed goes first: the pace, the bar, the end of the caption.
  const auto fits = [&](const std::string& more) {
    return CountColumns(caption_) + 1 + CountColumns(done + left + more) <= line_.Room();
  };
  if (fits(pace)) done += pace;
  if (fits(Bar(share))) done.insert(0, Bar(share));
  done = ' ' + done + left;
  return CutToColumns(caption_, line_.Room() - std::min(line_.Room(), CountColumns(done))) + done;
}

}  // namespace tolvan
