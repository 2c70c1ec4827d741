// pbProgreso with pb01 and lbProgreso: what the progress callback drives.
#pragma once

#include <wx/panel.h>

#include "services/clsCallBackProgreso.h"

class wxGauge;
class wxStaticText;

namespace tolvan {

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

}  // namespace tolvan
