#include "cli/TerminalStatus.h"

#include <string>

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
  explicit Shown(std::ostream& out) : line_(out) { line_.Begin(); }
  ~Shown() override { line_.Clear(); }
  Shown(const Shown&) = delete;
  Shown& operator=(const Shown&) = delete;

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
    std::string text = text_;
    if (maximum_ > 0 && done_ > 0) {
      text += ": " + std::to_string(done_) + " de " + std::to_string(maximum_) + ", " +
              TimeLeft(line_.Seconds(), static_cast<double>(done_) / maximum_);
    }
    line_.Draw(text);
  }

  TerminalLine line_;
  std::string text_;
  std::int32_t maximum_ = 0;
  std::int32_t done_ = 0;
};

}  // namespace

std::unique_ptr<StatusDisplay> TerminalStatus::OpenStatus() {
  if (!shown_) return std::make_unique<Silent>();
  return std::make_unique<Shown>(*out_);
}

}  // namespace tolvan
