#include "system/Waiting.h"

#include <thread>

namespace tolvan {

Waiting::Waiting(const Interruption* interruption, std::string_view text, std::chrono::milliseconds patience)
    : interruption_(interruption), text_(text), patience_(patience) {}

Waiting::~Waiting() {
  if (told_) interruption_->WaitEnds();
}

bool Waiting::Rest(std::chrono::milliseconds time) noexcept {
  if (interruption_ != nullptr && !told_ && Clock::now() - began_ >= patience_) {
    told_ = true;
    interruption_->WaitBegins(text_);
  }
  if (!told_ || !interruption_->AnswerFor(time)) std::this_thread::sleep_for(time);
  return interruption_ == nullptr || !interruption_->Requested();
}

}  // namespace tolvan
