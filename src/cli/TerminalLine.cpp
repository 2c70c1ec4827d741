#include "cli/TerminalLine.h"

#include <cmath>
#include <cstdint>
#include <ostream>

#include "base/TextColumns.h"

namespace tolvan {
namespace {

using std::chrono::steady_clock;

constexpr auto betweenDrawings = std::chrono::milliseconds(100);
constexpr const char* clearLine = "\r\x1B[K";

}  // namespace

void TerminalLine::Begin() {
  began_ = drawn_ = steady_clock::now();
}

bool TerminalLine::Due() {
  const Moment now = steady_clock::now();
  if (now - drawn_ < betweenDrawings) return false;
  drawn_ = now;
  return true;
}

void TerminalLine::Draw(std::string_view text) {
  hasDrawn_ = true;
  *out_ << clearLine << CutToColumns(text, Room()) << std::flush;
}

void TerminalLine::Clear() {
  if (hasDrawn_) *out_ << clearLine << std::flush;
  hasDrawn_ = false;
}

double TerminalLine::Seconds() const {
  return std::chrono::duration<double>(steady_clock::now() - began_).count();
}

std::string TimeLeft(double secondsPassed, double share) {
  const std::int64_t whole = std::llround(secondsPassed / share - secondsPassed);
  if (whole < 60) return "quedan " + std::to_string(whole) + " s";
  return "quedan " + std::to_string(whole / 60) + " min " + std::to_string(whole % 60) + " s";
}

}  // namespace tolvan
