#include "desktop/DesktopWork.h"

#include <wx/app.h>

namespace tolvan {

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
  using namespace std::chrono_literals;
  constexpr auto pause = 40ms;
  if (depth_ == 0 || letsThrough_) return;
  if (std::chrono::steady_clock::now() - lastPass_ < pause) return;
  letsThrough_ = true;
  wxTheApp->Yield(true);
  letsThrough_ = false;
  lastPass_ = std::chrono::steady_clock::now();
}

}  // namespace tolvan
