// The display that a long operation puts over the window that started it: text, bar, and a button that stops the work.
// While it is shown no other window answers.
#pragma once

#include <wx/dialog.h>
#include <wx/utils.h>

#include <chrono>
#include <memory>

#include "desktop/DesktopWork.h"
#include "host/UserInterface.h"

class wxGauge;
class wxStaticText;

namespace tolvan {

class StatusDialog : public wxDialog, public StatusDisplay {
 public:
  /// `work` must outlive the dialog.
  StatusDialog(wxWindow* parent, DesktopWork& work);
  ~StatusDialog() override;

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
