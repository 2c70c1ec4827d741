#pragma once

#include <chrono>
#include <string_view>

namespace tolvan {

/// The user in front of running work, as those who work see him: whether he wants it stopped, and what he must know
/// while it waits for somebody else. Everything but the first is for the waits of providers; see system/Waiting.h.
class Interruption {
 public:
  virtual ~Interruption() = default;

  /// Whether the user asked that the running work stop. Long loops ask it at every step and stop as after a failure.
  virtual bool Requested() const noexcept = 0;

  /// The work waits, and has waited longer than goes unnoticed. `text` is a sentence for people that says for whom; it
  /// is shown until WaitEnds. Waits do not nest.
  virtual void WaitBegins(std::string_view /*text*/) const noexcept {}
  virtual void WaitEnds() const noexcept {}

  /// Between WaitBegins and WaitEnds: answers the user for that long. False where there is nothing to answer; then it
  /// returned at once.
  virtual bool AnswerFor(std::chrono::milliseconds /*time*/) const noexcept { return false; }
};

}  // namespace tolvan
