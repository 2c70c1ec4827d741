// The review of one import as an importer gets it: the dialog, its logic, and the view between them.
#pragma once

#include "desktop/StatusImportarDialog.h"
#include "import/ImportReview.h"
#include "ui/StatusImportarView.h"

namespace tolvan {

/// What the logic sees of the dialog.
class StatusImportarDialogView : public StatusImportarView {
 public:
  StatusImportarDialogView(wxWindow* parent, const ComponentContext& context, DesktopWork& work,
                           frmStatusImportar& logic)
      : context_(context), work_(work), dialog_(parent, context, work, logic) {}

  ReviewListModel& lvStatus() override { return dialog_.List().Rows(); }
  void SetExplanation(std::string_view text) override { dialog_.SetExplanation(text); }
  void SetNote(std::string_view text) override { dialog_.SetNote(text); }
  void SetSummary(int index, std::string_view text) override { dialog_.SetSummary(index, text); }
  void EnableAccept(bool enabled) override { dialog_.EnableAccept(enabled); }
  void PopUpMenu(bool associate, bool dissociate, bool setCode) override {
    dialog_.PopUpMenu({associate, dissociate, setCode});
  }
  std::optional<std::string> PickItem(const SqlStatement& items, std::string_view subject) override;
  void ShowModal() override;
  void Close() override;
  std::unique_ptr<StatusDisplay> OpenStatus() override;

 private:
  const ComponentContext& context_;
  DesktopWork& work_;
  StatusImportarDialog dialog_;
};

class StatusImportarWindow : public ImportReview {
 public:
  /// Everything must outlive the window.
  StatusImportarWindow(wxWindow* parent, const ComponentContext& context, DesktopWork& work)
      : view_(parent, context, work, logic_), logic_(context, view_) {}

  void SetClase(IClaseImportar& importer) override;
  void RefrescarSumario() override { logic_.RefrescarSumario(); }
  ReviewList& lvStatus() override { return logic_.lvStatus(); }
  void ShowModal() override { logic_.ShowModal(); }

 private:
  StatusImportarDialogView view_;
  frmStatusImportar logic_;
};

}  // namespace tolvan
