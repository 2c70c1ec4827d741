#include "cli/TerminalProgress.h"

#include <algorithm>
#include <cmath>

#include "base/Text.h"

namespace tolvan {
namespace {

constexpr std::size_t barWidth = 20;

std::string Bar(double share) {
  const auto filled = static_cast<std::size_t>(share * barWidth);
  return '[' + std::string(filled, '#') + std::string(barWidth - filled, '.') + "] ";
}

class Silent : public StatusDisplay {
 public:
  void SetText(std::string_view) override {}
  void SetRange(std::int32_t) override {}
  void Advance() override {}
};

class Shown : public StatusDisplay {
 public:
  Shown(std::ostream& out, const TerminalColumns& columns) : line_(out, columns) { line_.Begin(); }

  void SetText(std::string_view text) override {
    text_ = text;
    DrawNowAndThen();
  }
  void SetRange(std::int32_t maximum) override {
    maximum_ = maximum;
    done_ = 0;
    line_.Begin();
  }
  void Advance() override {
    ++done_;
    DrawNowAndThen();
  }

 private:
  void DrawNowAndThen() {
    if (!line_.Due()) return;
    std::string counts;
    if (maximum_ > 0 && done_ > 0) {
      counts = ": " + std::to_string(done_) + " de " + std::to_string(maximum_) + ", " +
               TimeLeft(line_.Seconds(), static_cast<double>(done_) / maximum_);
    }
    const std::size_t room = line_.Room() - std::min(line_.Room(), CountColumns(counts));
    line_.Draw(CutToColumns(text_, room) + counts);
  }

  TerminalLine line_;
  std::string text_;
  std::int32_t maximum_ = 0;
  std::int32_t done_ = 0;
};

}  // namespace

std::string TimeLeft(double secondsPassed, double share) {
  const std::int64_t whole = std::llround(secondsPassed / share - secondsPassed);
  if (whole < 60) return "quedan " + std::to_string(whole) + " s";
  return "quedan " + std::to_string(whole / 60) + " min " + std::to_string(whole % 60) + " s";
}

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

std::unique_ptr<StatusDisplay> TerminalStatus::OpenStatus() {
  if (!shown_) return std::make_unique<Silent>();
  return std::make_unique<Shown>(*out_, columns_);
}

}  // namespace tolvan
