#include "desktop/WxLayoutWindow.h"

#include <wx/display.h>

namespace tolvan {
namespace {

constexpr int twipsPerPixel = 15;

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

void WxLayoutWindow::SetState(WindowState state) {
  if (state == WindowState::Maximised) window_.Maximize();
  if (state == WindowState::Minimised) window_.Iconize();
}

/// The place of the frame and the size of what is inside it: how thick a frame will be is only guessed before a window
/// is shown, and a size with the frame would grow by the error each time the window is opened.
Rectangle WxLayoutWindow::Bounds() const {
  return ToTwips(wxRect(window_.GetPosition(), window_.GetClientSize()));
}

void WxLayoutWindow::SetBounds(const Rectangle& bounds) {
  window_.Move(bounds.left / twipsPerPixel, bounds.top / twipsPerPixel);
  window_.SetClientSize(bounds.width / twipsPerPixel, bounds.height / twipsPerPixel);
}

std::vector<Rectangle> WxLayoutWindow::WorkAreas() {
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
