// A sizable top-level window of the toolkit as the layout module sees it.
#pragma once

#include <wx/toplevel.h>

#include <string>
#include <vector>

#include "ui/WindowLayout.h"

namespace tolvan {

/// A twip is a fifteenth of a pixel at the scale at which the window is drawn 1:1, so that a stored size keeps its
/// looks on a screen of another density.
class WxLayoutWindow final : public LayoutWindow {
 public:
  /// For the window's constructor; it watches the window.
  WxLayoutWindow(wxTopLevelWindow& window, std::string tag);

  std::string LayoutTag() const override { return tag_; }
  bool IsSizable() const override { return true; }
  WindowState State() const override;
  void SetState(WindowState state) override;
  Rectangle Bounds() const override;
  void SetBounds(const Rectangle& bounds) override;
  std::vector<Rectangle> WorkAreas() const override;

 private:
  void GiveSize();

  wxTopLevelWindow& window_;
  std::string tag_;
  wxRect asked_;        // frame and all
  wxSize givenClient_;  // what that size has left of the window's inside
  bool toBeGiven_ = false;
  bool asksToGive_ = false;
};

}  // namespace tolvan
