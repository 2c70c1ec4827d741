// frmOpciones as a window: the tree on the left, one panel on the right, progress and buttons below. It shows what
// frmOpciones says and forwards every event to it.
#pragma once

#include <wx/dataview.h>
#include <wx/frame.h>

#include <map>
#include <string>
#include <vector>

#include "desktop/DesktopWork.h"
#include "desktop/WxLayoutWindow.h"
#include "ui/frmOpciones.h"

class wxBoxSizer;
class wxButton;
class wxTextCtrl;

namespace tolvan {

class PanelStack;
class ProgressPanel;

class OptionsFrame : public wxFrame, public OptionsView {
 public:
  /// Everything must outlive the frame, which the toolkit deletes once it is closed.
  OptionsFrame(const ComponentContext& context, DesktopWork& work, ActionTools tools);

  // OptionsView
  std::string Text(std::string_view controlName) const override;
  void SetText(std::string_view controlName, std::string_view text) override;
  bool Checked(std::string_view controlName) const override;
  void SetChecked(std::string_view controlName, bool checked) override;
  void SetEnabled(std::string_view controlName, bool enabled) override;
  Date DateOf(std::string_view controlName) const override;
  void SetDate(std::string_view controlName, Date date) override;
  TimeOfDay TimeOf(std::string_view controlName) const override;
  void SetTime(std::string_view controlName, TimeOfDay time) override;
  void Focus(std::string_view controlName) override;
  void ShowNodes(const std::vector<ActionNode>& nodes) override;
  void SelectNode(const std::string& key) override;
  void ShowPanel(int panel) override;
  void SetFile(int panel, std::string_view text) override;
  void SelectAll(std::string_view controlName) override;
  void SetBusy(bool busy) override;
  void AllowAccept(bool allowed) override;
  void RequestStop() override { work_.Stop(); }
  void CloseWindow() override;
  ProgressContainer& pbProgreso() override;
  ProgressBar& pb01() override;
  ProgressCaption& lbProgreso() override;
  MessagePump& Pump() override { return work_; }
  WxLayoutWindow& StoredLayout() override { return layout_; }
  void PressTab() override;
  std::unique_ptr<StatusDisplay> OpenStatus() override;

 private:
  void MakeTree(wxWindow& parent);
  wxSizer* MakeButtons(wxWindow& parent);
  wxSizer* MakeRightSide(wxWindow& parent);
  void BindEvents();
  void ShowRunning(bool running);
  void OnClose(wxCloseEvent& event);
  void OnKey(wxKeyEvent& event);
  wxWindow& Control(std::string_view name) const;
  wxTextCtrl* TextBox(std::string_view name) const;

  DesktopWork& work_;
  WxLayoutWindow layout_;
  frmOpciones logic_;
  wxDataViewTreeCtrl* tree_ = nullptr;
  std::map<std::string, wxDataViewItem> nodes_;
  PanelStack* panels_ = nullptr;
  ProgressPanel* progress_ = nullptr;
  wxButton* accept_ = nullptr;
  wxButton* cancel_ = nullptr;
  wxWindow* focusBeforeWork_ = nullptr;
  bool acceptAllowed_ = true;
  bool closing_ = false;
};

}  // namespace tolvan
