// The right side of the options window: one panel per action, of which one is shown. What does not fit is scrolled, and
// a control that gets the focus is scrolled into sight.
#pragma once

#include <wx/scrolwin.h>

#include <map>
#include <string_view>

class wxPanel;

namespace tolvan {

class frmOpciones;
struct Action;

class PanelStack : public wxScrolledWindow {
 public:
  /// `logic` must outlive the stack. Panel 0 is shown.
  PanelStack(wxWindow* parent, frmOpciones& logic);

  /// The panel of an action, or for 0 the introduction.
  void ShowPanel(int panel);

  /// The file's label on the panel of an action that has one.
  void SetFile(int panel, std::string_view text);

  void EnablePanels(bool enabled);

  /// Moves the focus on from the field that has it, which is left as a whole where it is made of several controls.
  void LeaveField();

 private:
  wxPanel* MakeIntroduction();
  wxPanel* MakePanel(const Action& action, frmOpciones& logic);

  std::map<int, wxPanel*> panels_;  // by action; 0 is the introduction
};

}  // namespace tolvan
