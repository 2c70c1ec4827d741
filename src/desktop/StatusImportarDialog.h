// frmStatusImportar as a dialog: controls and layout. It forwards every event to frmStatusImportar in ui/.
#pragma once

#include <wx/dialog.h>

#include <array>
#include <string_view>

#include "desktop/DesktopWork.h"
#include "desktop/ReviewListView.h"
#include "desktop/WxLayoutWindow.h"
#include "services/ComponentContext.h"
#include "ui/frmStatusImportar.h"

class wxButton;
class wxCheckBox;
class wxNotebook;
class wxStaticText;
class wxTextCtrl;

namespace tolvan {

class WrappedText;

class StatusImportarDialog : public wxDialog, public LayoutWindow {
 public:
  /// Everything must outlive the dialog.
  StatusImportarDialog(wxWindow* parent, const ComponentContext& context, DesktopWork& work, frmStatusImportar& logic);

  ReviewListView& List() { return *list_; }
  void SetExplanation(std::string_view text);
  void SetNote(std::string_view text);
  void SetSummary(int index, std::string_view text);
  void EnableAccept(bool enabled);
  void PopUpMenu(const std::array<bool, 3>& enabled);
  void SaveState();

  // LayoutWindow
  std::string LayoutTag() const override { return "frmStatusImportar"; }
  bool IsSizable() const override { return true; }
  WindowState State() const override { return layout_.State(); }
  void SetState(WindowState state) override { layout_.SetState(state); }
  Rectangle Bounds() const override { return layout_.Bounds(); }
  void SetBounds(const Rectangle& bounds) override { layout_.SetBounds(bounds); }
  std::vector<Rectangle> WorkAreas() const override { return WxLayoutWindow::WorkAreas(); }

 private:
  void MakeTabs(wxSizer& sizer);
  void BreakTabTitles();
  void MakeList(wxSizer& sizer);
  wxSizer* MakeFoot();
  void BindEvents();
  void OnKey(wxKeyEvent& event);
  void OnTab();
  void ShowNote();
  void OnAccept();
  void AskForMenu(bool atSelectedLine);

  const ComponentContext& context_;
  DesktopWork& work_;
  frmStatusImportar& logic_;
  WxLayoutWindow layout_;
  wxNotebook* tabs_ = nullptr;
  WrappedText* explanation_ = nullptr;
  ReviewListView* list_ = nullptr;
  wxTextCtrl* note_ = nullptr;
  std::array<wxStaticText*, 3> summary_{};
  wxCheckBox* reviewed_ = nullptr;
  wxButton* accept_ = nullptr;
  wxButton* cancel_ = nullptr;
  bool menuAtLine_ = false;
};

}  // namespace tolvan
