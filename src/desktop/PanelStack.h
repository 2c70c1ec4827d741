// The right side of the options window: one panel per action, of which one is shown. What does not fit is scrolled, and
// a control that gets the focus is scrolled into sight.
#pragma once

#include <wx/scrolwin.h>

#include <string_view>
#include <vector>

class wxPanel;

namespace tolvan {

class OptionsWindow;

class PanelStack : public wxScrolledWindow {
 public:
  /// `logic` must outlive the stack. Panel 0 is shown.
  PanelStack(wxWindow* parent, OptionsWindow& logic);

  /// Panels are numbered as their actions; 0 is the introduction.
  void ShowPanel(int panel);

  /// The file's label on a panel that has one.
  void SetFile(int panel, std::string_view text);

  void EnablePanels(bool enabled);

 private:
  wxPanel* MakeIntroduction();

  std::vector<wxPanel*> panels_;
};

}  // namespace tolvan
