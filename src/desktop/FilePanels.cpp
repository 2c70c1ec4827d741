#include "desktop/FilePanels.h"

#include <wx/button.h>
#include <wx/radiobut.h>
#include <wx/sizer.h>
#include <wx/textctrl.h>

#include "desktop/ControlName.h"
#include "desktop/PanelParts.h"
#include "desktop/WxText.h"
#include "ui/OptionsWindow.h"
#include "ui/PanelTexts.h"

namespace tolvan {

void FilePanel::SetFile(std::string_view path) {
  ShowPath(*file_, path);
}

void FilePanel::AddFile(wxSizer& sizer, OptionsWindow& logic, int element, std::string_view label) {
  const PathRow row = AddPathRow(*this, sizer, label, control::archivo, "BAbrirArchivo" + std::to_string(element));
  row.button->Bind(wxEVT_BUTTON, [&logic, element](wxCommandEvent&) { logic.BAbrirArchivo_Click(element); });
  file_ = row.path;
}

WorkbookPanel::WorkbookPanel(wxWindow* parent, OptionsWindow& logic, std::string_view help, bool withTemplate)
    : FilePanel(parent) {
  auto* const column = new wxBoxSizer(wxVERTICAL);
  AddParagraph(*this, *column, help);
  AddFile(*column, logic, 0, panel_text::workbookLabel);
  if (withTemplate) {
    AddParagraph(*this, *column, panel_text::templateHelp);
    wxButton* const open = MakeButton(*this, "cmdAbrirPlantilla", panel_text::openTemplate);
    open->Bind(wxEVT_BUTTON, [&logic](wxCommandEvent&) { logic.cmdAbrirPlantilla_Click(); });
    column->Add(open);
  }
  SetSizer(column);
}

CollectorPanelView::CollectorPanelView(wxWindow* parent, OptionsWindow& logic) : wxPanel(parent) {
  auto* const column = new wxBoxSizer(wxVERTICAL);
  AddParagraph(*this, *column, panel_text::collectorHelp);
  const auto add = [&](CollectorPurpose purpose, std::string_view caption, long style) {
    auto* const option = new wxRadioButton(this, wxID_ANY, ToWx(caption), wxDefaultPosition, wxDefaultSize, style);
    NameControl(*option, "opProposito" + std::to_string(static_cast<int>(purpose)));
    option->Bind(wxEVT_RADIOBUTTON, [&logic, purpose](wxCommandEvent&) { logic.opProposito_Click(purpose); });
    column->Add(option, wxSizerFlags().Border(wxBOTTOM, Gap(*this)));
    return option;
  };
  add(CollectorPurpose::Count, panel_text::purposeCount, wxRB_GROUP)->SetValue(true);
  add(CollectorPurpose::Receiving, panel_text::purposeReceiving, 0);
  wxButton* const create = MakeButton(*this, "cmdDCExportarItems", panel_text::createFile);
  create->Bind(wxEVT_BUTTON, [&logic](wxCommandEvent&) { logic.cmdDCExportarItems_Click(); });
  column->Add(create, wxSizerFlags().Border(wxTOP, Gap(*this)));
  SetSizer(column);
}

RegistryPanel::RegistryPanel(wxWindow* parent, OptionsWindow& logic) : FilePanel(parent) {
  auto* const column = new wxBoxSizer(wxVERTICAL);
  AddParagraph(*this, *column, panel_text::registryHelp);
  AddParagraph(*this, *column, panel_text::registryWarning, true);
  AddFile(*column, logic, 1, panel_text::registryLabel);
  SetSizer(column);
}

}  // namespace tolvan
