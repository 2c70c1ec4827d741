#include "desktop/WxLayoutWindow.h"

#include <wx/display.h>

#include <utility>

#include "desktop/Controls.h"

namespace tolvan {
namespace {

Rectangle ToTwips(const wxRect& pixels) {
  return {.left = pixels.x * twipsPerPixel,
          .top = pixels.y * twipsPerPixel,
          .width = pixels.width * twipsPerPixel,
          .height = pixels.height * twipsPerPixel};
}

}  // namespace

WindowState WxLayoutWindow::State() const {
  if (window_.IsIconized()) return WindowState::Minimised;
  return window_.IsMaximized() ? WindowState::Maximised : WindowState::Normal;
}

WxLayoutWindow::WxLayoutWindow(wxTopLevelWindow& window, std::string tag) : window_(window), tag_(std::move(tag)) {
  window_.Bind(wxEVT_SHOW, [this](wxShowEvent& event) {
    event.Skip();
    GiveSize();
  });
  window_.Bind(wxEVT_SIZE, [this](wxSizeEvent& event) {
    event.Skip();
    GiveSize();
  });
}

void WxLayoutWindow::SetState(WindowState state) {
  if (state == WindowState::Maximised) window_.Maximize();
  if (state == WindowState::Minimised) window_.Iconize();
}

/// As long as nobody has changed the size since it was given, it is the one that was asked for, whatever the window
/// manager has put around the window until now.
Rectangle WxLayoutWindow::Bounds() const {
  wxRect bounds = window_.GetRect();
  if (toBeGiven_) return ToTwips(asked_);
  if (window_.GetClientSize() == givenClient_) bounds.SetSize(asked_.GetSize());
  return ToTwips(bounds);
}

/// How thick its frame will be is not known before a window is shown, and one whose whole size is given beforehand
/// loses its place. So it is a little too small at first: too large it would be moved to fit on the screen.
void WxLayoutWindow::SetBounds(const Rectangle& bounds) {
  asked_ = wxRect(bounds.left / twipsPerPixel, bounds.top / twipsPerPixel, bounds.width / twipsPerPixel,
                  bounds.height / twipsPerPixel);
  window_.Move(asked_.GetPosition());
  if (asked_.GetSize() == window_.GetSize()) return;
  toBeGiven_ = true;
  window_.SetClientSize(asked_.GetSize() - EstimatedFrame(window_));
  GiveSize();
}

/// Once the window is shown, and no longer maximised where it begins so; and again when the window manager changes its
/// frame later, which leaves the inside as it is and makes the whole larger.
void WxLayoutWindow::GiveSize() {
  const bool frameChanged = window_.GetClientSize() == givenClient_ && window_.GetSize() != asked_.GetSize();
  if (asksToGive_ || !window_.IsShown() || window_.IsMaximized() || !(toBeGiven_ || frameChanged)) return;
  asksToGive_ = true;
  window_.CallAfter([this] {
    window_.SetSize(asked_.GetSize());
    givenClient_ = window_.GetClientSize();
    toBeGiven_ = asksToGive_ = false;
  });
}

std::vector<Rectangle> WxLayoutWindow::WorkAreas() const {
  std::vector<Rectangle> areas;
  for (unsigned number = 0; number < wxDisplay::GetCount(); ++number) {
    const wxDisplay display(number);
    const Rectangle area = ToTwips(display.GetClientArea());
    if (display.IsPrimary()) {
      areas.insert(areas.begin(), area);
    } else {
      areas.push_back(area);
    }
  }
  return areas;
}

}  // namespace tolvan
