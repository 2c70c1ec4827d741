// The options window when nobody looks at it: values without controls. The unattended run and the command use it.
#pragma once

#include <map>
#include <string>

#include "ui/OpcionesView.h"

namespace tolvan {

/// A control that was never written has an empty text, no tick, 1970-01-01 and midnight.
class HeadlessOpcionesView : public OpcionesView {
 public:
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

  /// What SetEnabled was last told; true before.
  bool Enabled(std::string_view controlName) const;

 private:
  struct Control {
    std::string text;
    bool checked = false;
    bool enabled = true;
    Date date;
    TimeOfDay time;
  };

  const Control& Get(std::string_view controlName) const;
  Control& Get(std::string_view controlName);

  std::map<std::string, Control, std::less<>> controls_;
};

}  // namespace tolvan
