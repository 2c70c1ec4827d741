#include "cli/TerminalStatus.h"

#include <chrono>
#include <cmath>
#include <ostream>
#include <string>

namespace tolvan {
namespace {

using std::chrono::steady_clock;

constexpr auto betweenDrawings = std::chrono::milliseconds(100);
constexpr const char* clearLine = "\r\x1B[K";

class Silent : public StatusDisplay {
 public:
  void SetText(std::string_view) override {}
  void SetRange(std::int32_t) override {}
  void Advance() override {}
};

class Line : public StatusDisplay {
 public:
  explicit Line(std::ostream& out) : out_(out), began_(steady_clock::now()), drawn_(began_) {}
  ~Line() override { out_ << clearLine << std::flush; }

  void SetText(std::string_view text) override {
    text_ = text;
    DrawNowAndThen();
  }
  void SetRange(std::int32_t maximum) override {
    maximum_ = maximum;
    done_ = 0;
    began_ = steady_clock::now();
  }
  void Advance() override {
    ++done_;
    DrawNowAndThen();
  }

 private:
  void DrawNowAndThen() {
    const auto now = steady_clock::now();
    if (now - drawn_ < betweenDrawings) return;
    drawn_ = now;
    out_ << clearLine << text_;
    if (maximum_ > 0 && done_ > 0) {
      const double passed = std::chrono::duration<double>(now - began_).count();
      const auto left = std::lround(passed * (maximum_ - done_) / done_);
      out_ << ": " << done_ << " de " << maximum_ << ", quedan " << left << " s";
    }
    out_ << std::flush;
  }

  std::ostream& out_;
  std::string text_;
  std::int32_t maximum_ = 0;
  std::int32_t done_ = 0;
  steady_clock::time_point began_;
  steady_clock::time_point drawn_;
};

}  // namespace

std::unique_ptr<StatusDisplay> TerminalStatus::OpenStatus() {
  if (!shown_) return std::make_unique<Silent>();
  return std::make_unique<Line>(*out_);
}

}  // namespace tolvan
