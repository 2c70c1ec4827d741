#include "system/Waiting.h"

#include <thread>

namespace tolvan {

Waiting::Waiting(const Interruption* interruption, std::string_view text, std::chrono::milliseconds patience)
    : interruption_(interruption), text_(text), patience_(patience) {}

Waiting::~Waiting() {
  if (shown_) interruption_->WaitEnds();
}

bool Waiting::Rest(std::chrono::milliseconds time) noexcept {
  if (interruption_ != nullptr && !shown_ && Clock::now() - began_ >= patience_) {
    shown_ = true;
    interruption_->WaitBegins(text_);
  }
  if (!shown_ || !interruption_->AnswerFor(time)) std::this_thread::sleep_for(time);
  return interruption_ == nullptr || !interruption_->Requested();
}

}  // namespace tolvan
