#include "desktop/DesktopWork.h"

#include <wx/app.h>

#include <thread>

#include "desktop/ProgressDisplays.h"
#include "desktop/WindowParts.h"

namespace tolvan {

using namespace std::chrono_literals;

DesktopWork::DesktopWork() : openStatus_([this] { return std::make_unique<WaitDialog>(DialogParent(), *this); }) {}
DesktopWork::~DesktopWork() = default;

void DesktopWork::Begin() {
  ++depth_;
  stopRequested_ = false;
}

bool DesktopWork::Requested() const noexcept {
  try {
    LetEventsThrough();
  } catch (...) {
    return true;  // An event handler failed: whoever is working stops as at the user's wish.
  }
  return stopRequested_ || sessionEnds_;
}

void DesktopWork::LetEventsThrough() const {
  constexpr auto pause = 40ms;
  if (depth_ == 0 || letsThrough_) return;
  if (std::chrono::steady_clock::now() - lastPass_ >= pause) PassEvents();
}

void DesktopWork::PassEvents() const {
  letsThrough_ = true;
  wxTheApp->Yield(true);
  letsThrough_ = false;
  lastPass_ = std::chrono::steady_clock::now();
}

void DesktopWork::WaitBegins(std::string_view text) const noexcept {
  // A wish of earlier work says nothing about this.
  if (depth_++ == 0) stopRequested_ = false;
  if (letsThrough_) return;  // a wait inside another one's events
  try {
    if (status_ == nullptr) wait_ = openStatus_();
    status_->ShowWait(text);
  } catch (const std::exception&) {
    return;  // it waits all the same
  }
}

void DesktopWork::WaitEnds() const noexcept {
  --depth_;
  if (letsThrough_) return;
  if (status_ != nullptr) status_->EndWait();
  wait_.reset();
}

/// Often, so that assistive tools, which ask for one thing after the other, get their answers.
bool DesktopWork::AnswerFor(std::chrono::milliseconds time) const noexcept {
  if (letsThrough_) return false;
  const auto end = std::chrono::steady_clock::now() + time;
  try {
    do {
      PassEvents();
      std::this_thread::sleep_for(5ms);
    } while (std::chrono::steady_clock::now() < end);
  } catch (...) {
    stopRequested_ = true;  // as in Requested
  }
  return true;
}

}  // namespace tolvan
