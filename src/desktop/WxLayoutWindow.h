#pragma once

#include <wx/toplevel.h>

#include <string>

#include "ui/WindowLayout.h"

namespace tolvan {

/// A sizable top-level window of the toolkit as the layout module sees it. A twip is a fifteenth of a pixel at the
/// scale at which the window is drawn 1:1, so that a stored size keeps its looks on a screen of another density.
class WxLayoutWindow {
 public:
  /// For the window's constructor; it watches the window.
  explicit WxLayoutWindow(wxTopLevelWindow& window);

  WindowState State() const;
  void SetState(WindowState state);
  Rectangle Bounds() const;
  void SetBounds(const Rectangle& bounds);
  static std::vector<Rectangle> WorkAreas();

 private:
  void GiveSize();

  wxTopLevelWindow& window_;
  wxSize size_ = wxDefaultSize;  // to be given yet, frame and all
};

}  // namespace tolvan
