#include "cli/TerminalStatus.h"

#include <algorithm>
#include <string>

#include "base/TextColumns.h"
#include "cli/TerminalLine.h"

namespace tolvan {
namespace {

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

std::unique_ptr<StatusDisplay> TerminalStatus::OpenStatus() {
  if (!shown_) return std::make_unique<Silent>();
  return std::make_unique<Shown>(*out_, columns_);
}

}  // namespace tolvan
