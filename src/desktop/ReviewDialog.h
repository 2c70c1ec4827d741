// The review window: controls and layout. It forwards every event to frmStatusImportar in ui/.
#pragma once

#include <wx/dialog.h>

#include <array>
#include <memory>
#include <optional>
#include <string>
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

class ReviewDialog : public wxDialog, public ReviewView {
 public:
  /// Everything must outlive the dialog.
  ReviewDialog(wxWindow* parent, const ComponentContext& context, DesktopWork& work, frmStatusImportar& logic);

  // ReviewView
  ReviewListModel& lvStatus() override { return list_->Rows(); }
  void SetExplanation(std::string_view text) override;
  void SetNote(std::string_view text) override;
  void SetSummary(int index, std::string_view text) override;
  void EnableAccept(bool enabled) override;
  void PopUpMenu(bool associate, bool dissociate, bool setCode) override;
  std::optional<std::string> PickItem(const SqlStatement& items, std::string_view subject) override;
  void ShowUntilClosed() override;
  void CloseWindow() override;
  std::unique_ptr<StatusDisplay> OpenStatus() override;

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
