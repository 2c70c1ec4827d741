// What the options window shows when somebody looks at it, beside the values of its controls: tree, panels, focus, busy
// state and progress.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "host/UserInterface.h"
#include "services/clsCallBackProgreso.h"
#include "ui/ActionTable.h"
#include "ui/OpcionesView.h"
#include "ui/WindowLayout.h"

namespace tolvan {

/// Where the key presses of a window go.
class KeyboardTarget {
 public:
  virtual ~KeyboardTarget() = default;

  /// Moves the focus to the next control, as the Tab key does.
  virtual void PressTab() = 0;
};

/// Enter (13) becomes 0, and a Tab goes to the target instead. Other keys stay as they are.
inline void EnterAsTab(std::int16_t& keyCode, KeyboardTarget& target) {
  constexpr std::int16_t enter = 13;
  if (keyCode != enter) return;
  keyCode = 0;
  target.PressTab();
}

class OptionsWindowView : public OpcionesView, public StatusWindow, public KeyboardTarget, public LayoutWindow {
 public:
  /// Fills tvOpciones; a parent stands before its children.
  virtual void ShowNodes(const std::vector<ActionNode>& nodes) = 0;

  /// Marks a node of tvOpciones as the chosen one, which is no click on it.
  virtual void SelectNode(const std::string& key) = 0;

  /// Hides every panel but this one. 0 is the introduction, the others are numbered as their actions.
  virtual void ShowPanel(int panel) = 0;

  /// The file's label on a panel: lblArchivo.
  virtual void SetFile(int panel, std::string_view text) = 0;

  virtual void SelectAll(std::string_view controlName) = 0;

  /// While busy nothing answers but bCancelar, which stops the work then, and Pump lets events through. The user's last
  /// wish to stop is forgotten when work begins. Calls do not nest.
  virtual void SetBusy(bool busy) = 0;

  /// Whether accepting runs the action that is shown. Where it does not, the button of its panel is the default one.
  virtual void AllowAccept(bool allowed) = 0;

  /// The user's wish to stop the work that is running.
  virtual void RequestStop() = 0;

  /// Ends the window.
  virtual void CloseWindow() = 0;

  virtual ProgressContainer& pbProgreso() = 0;
  virtual ProgressBar& pb01() = 0;
  virtual ProgressCaption& lbProgreso() = 0;
  virtual MessagePump& Pump() = 0;
};

}  // namespace tolvan
