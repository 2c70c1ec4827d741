#include "desktop/PanelStack.h"

#include <wx/panel.h>
#include <wx/sizer.h>

#include "desktop/ControlName.h"
#include "desktop/DailySalesPanel.h"
#include "desktop/FilePanels.h"
#include "desktop/PanelParts.h"
#include "desktop/TextScale.h"
#include "desktop/WrappedText.h"
#include "ui/OptionsWindow.h"
#include "ui/PanelTexts.h"

namespace tolvan {

PanelStack::PanelStack(wxWindow* parent, OptionsWindow& logic)
    : wxScrolledWindow(parent, wxID_ANY, wxDefaultPosition, wxDefaultSize, wxTAB_TRAVERSAL | wxBORDER_NONE) {
  NameControl(*this, "paneles");
  panels_ = {MakeIntroduction(),
             new DailySalesPanel(this, logic),
             nullptr,
             new WorkbookPanel(this, logic, panel_text::movilnetHelp, false),
             new CollectorPanelView(this, logic),
             new WorkbookPanel(this, logic, panel_text::excelHelp, true),
             new RegistryPanel(this, logic)};
  auto* const column = new wxBoxSizer(wxVERTICAL);
  wxSize largest = ScaledToText(*this, wxSize(480, 300));
  for (std::size_t number = 0; number < panels_.size(); ++number) {
    if (panels_[number] == nullptr) continue;
    NameControl(*panels_[number], "panel" + std::to_string(number));
    column->Add(panels_[number], wxSizerFlags(1).Expand());
    largest.IncTo(panels_[number]->GetSizer()->CalcMin());
  }
  SetSizer(column);
  const int step = GetCharHeight();
  SetScrollRate(step, step);
  // Room for the largest, so that the window does not change with the choice.
  SetMinSize(largest);
  ShowPanel(0);
}

wxPanel* PanelStack::MakeIntroduction() {
  auto* const introduction = new wxPanel(this);
  introduction->SetCanFocus(false);  // there is nothing in it to act on
  auto* const sizer = new wxBoxSizer(wxVERTICAL);
  NameControl(*AddParagraph(*introduction, *sizer, {}), control::explicacion);
  introduction->SetSizer(sizer);
  return introduction;
}

void PanelStack::ShowPanel(int panel) {
  wxPanel* const chosen = panels_.at(static_cast<std::size_t>(panel));
  for (wxPanel* const each : panels_) {
    if (each != nullptr) each->Show(each == chosen);
  }
  Scroll(0, 0);
  FitInside();
  Layout();
}

void PanelStack::SetFile(int panel, std::string_view text) {
  auto* const files = dynamic_cast<FilePanel*>(panels_.at(static_cast<std::size_t>(panel)));
  if (files != nullptr) files->SetFile(text);
}

void PanelStack::EnablePanels(bool enabled) {
  for (wxPanel* const each : panels_) {
    if (each != nullptr) each->Enable(enabled);
  }
}

}  // namespace tolvan
