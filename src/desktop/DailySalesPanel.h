// Panel 1: the fields of the daily sales file.
#pragma once

#include <wx/panel.h>

#include <functional>
#include <string_view>

namespace tolvan {

class OptionsWindow;

class DailySalesPanel : public wxPanel {
 public:
  /// `logic` must outlive the panel.
  DailySalesPanel(wxWindow* parent, OptionsWindow& logic);

 private:
  void AddFields(wxSizer& sizer);
  void AddMail(wxSizer& sizer);
  wxWindow* AddText(wxSizer& grid, std::string_view name, std::string_view label);
  void Forward(wxWindow& control, std::string_view name);
  void ValidateAfterLeaving(std::string_view name);

  OptionsWindow& logic_;
  bool validating_ = false;
};

}  // namespace tolvan
