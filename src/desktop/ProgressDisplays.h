// How the windows show work that lasts: the bar inside the options window, which the progress callback drives, and the
// dialog that a long operation puts over the window that started it.
#pragma once

#include <wx/dialog.h>
#include <wx/panel.h>
#include <wx/utils.h>

#include <chrono>
#include <memory>

#include "desktop/DesktopWork.h"
#include "host/UserInterface.h"
#include "services/clsCallBackProgreso.h"

class wxGauge;
class wxStaticText;

namespace tolvan {

/// pbProgreso with pb01 and lbProgreso.
class ProgressPanel : public wxPanel, public ProgressContainer, public ProgressBar, public ProgressCaption {
 public:
  explicit ProgressPanel(wxWindow* parent);

  void SetVisible(bool visible) override;
  void SetMin(std::int32_t minimum) override;
  void SetValue(std::int32_t value) override;
  void SetMax(std::int32_t maximum) override;
  std::int32_t Max() const override { return maximum_; }
  void SetCaption(std::string_view text) override;

 private:
  wxStaticText* caption_;
  wxGauge* bar_;
  std::int32_t minimum_ = 0;
  std::int32_t maximum_ = 1;
  int shown_ = -1;
};

/// "Favor espere": a text, a bar, and a button that stops the work. While it is shown no other window answers.
class WaitDialog : public wxDialog, public StatusDisplay {
 public:
  /// `work` must outlive the dialog.
  WaitDialog(wxWindow* parent, DesktopWork& work);
  ~WaitDialog() override;

  void SetText(std::string_view text) override;
  void SetRange(std::int32_t maximum) override;
  void Advance() override;

  /// Shows for whom the work waits, until the wait ends.
  void ShowWait(std::string_view text);
  void EndWait();

 private:
  void Stop();

  DesktopWork& work_;
  wxStaticText* text_;
  wxGauge* bar_;
  std::int32_t maximum_ = 0;
  std::int32_t value_ = 0;
  std::chrono::steady_clock::time_point shownAt_;
  wxString textBeforeWait_;
  wxWindowDisabler disabler_;
};

}  // namespace tolvan
