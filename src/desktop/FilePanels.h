// The panels of the other actions: a file to choose, or a purpose and a button.
#pragma once

#include <wx/panel.h>

#include <string_view>

class wxTextCtrl;

namespace tolvan {

class OptionsWindow;

/// A panel that shows the selected file of its action.
class FilePanel : public wxPanel {
 public:
  using wxPanel::wxPanel;
  void SetFile(std::string_view path);

 protected:
  /// Adds the row with lblArchivo and the element of BAbrirArchivo.
  void AddFile(wxSizer& sizer, OptionsWindow& logic, int element, std::string_view label);

 private:
  wxTextCtrl* file_ = nullptr;
};

/// Panels 3 and 5; `withTemplate` adds cmdAbrirPlantilla.
class WorkbookPanel : public FilePanel {
 public:
  WorkbookPanel(wxWindow* parent, OptionsWindow& logic, std::string_view help, bool withTemplate);
};

/// Panel 4: the purpose of the collector's file, and the button that makes it.
class CollectorPanelView : public wxPanel {
 public:
  CollectorPanelView(wxWindow* parent, OptionsWindow& logic);
};

/// Panel 6.
class RegistryPanel : public FilePanel {
 public:
  RegistryPanel(wxWindow* parent, OptionsWindow& logic);
};

}  // namespace tolvan
