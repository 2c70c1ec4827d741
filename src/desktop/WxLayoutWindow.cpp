#include "desktop/WxLayoutWindow.h"

#include <wx/display.h>

#include <utility>

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

WxLayoutWindow::WxLayoutWindow(wxTopLevelWindow& window) : window_(window) {
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

Rectangle WxLayoutWindow::Bounds() const {
  return ToTwips(window_.GetRect());
}

/// How thick its frame will be is not known before a window is shown, and one whose whole size is given beforehand
/// loses its place. So the size is nearly right at first.
void WxLayoutWindow::SetBounds(const Rectangle& bounds) {
  window_.Move(bounds.left / twipsPerPixel, bounds.top / twipsPerPixel);
  const wxSize size(bounds.width / twipsPerPixel, bounds.height / twipsPerPixel);
  if (size == window_.GetSize()) return;
  size_ = size;
  window_.SetClientSize(size);
  GiveSize();
}

/// Once the window is shown, and no longer maximised where it begins so.
void WxLayoutWindow::GiveSize() {
  if (size_ == wxDefaultSize || !window_.IsShown() || window_.IsMaximized()) return;
  const wxSize size = std::exchange(size_, wxDefaultSize);
  window_.CallAfter([this, size] { window_.SetSize(size); });
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
