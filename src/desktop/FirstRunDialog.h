// The window of a start without a configuration. It forwards its buttons to FirstRun in ui/.
#pragma once

#include <wx/dialog.h>

#include <functional>
#include <optional>
#include <string>
#include <string_view>

#include "ui/FirstRun.h"

class wxCheckBox;

namespace tolvan {

class FirstRunDialog : public wxDialog {
 public:
  /// `logic` must outlive the dialog.
  explicit FirstRunDialog(FirstRun& logic);

  /// The configuration to open, once the dialog ended with wxID_OK.
  const std::string& Chosen() const { return chosen_; }

 private:
  void AddChoice(wxSizer& column, std::string_view name, std::string_view label, std::string_view explanation,
                 const std::function<void()>& clicked);
  void Take(const std::optional<std::string>& configuration);

  FirstRun& logic_;
  wxCheckBox* remember_ = nullptr;
  std::string chosen_;
};

}  // namespace tolvan
