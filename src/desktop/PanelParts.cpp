#include "desktop/PanelParts.h"

#include <wx/button.h>
#include <wx/sizer.h>
#include <wx/stattext.h>
#include <wx/textctrl.h>

#include "desktop/ControlName.h"
#include "desktop/TextScale.h"
#include "desktop/WrappedText.h"
#include "desktop/WxText.h"
#include "ui/PanelTexts.h"

namespace tolvan {
namespace {

constexpr int firstTextWidth = 430;
constexpr int narrowestText = 160;

}  // namespace

int Gap(const wxWindow& window) {
  return window.FromDIP(8);
}

WrappedText* AddParagraph(wxWindow& panel, wxSizer& sizer, std::string_view text, bool emphasised) {
  auto* const paragraph = new WrappedText(&panel, text, WidthScaledToText(panel, firstTextWidth));
  paragraph->SetMinSize(wxSize(WidthScaledToText(panel, narrowestText), paragraph->GetMinHeight()));
  if (emphasised) paragraph->SetFont(paragraph->GetFont().Bold());
  sizer.Add(paragraph, wxSizerFlags().Expand().Border(wxBOTTOM, 2 * Gap(panel)));
  return paragraph;
}

wxStaticText* MakeLabel(wxWindow& panel, std::string_view text) {
  return new wxStaticText(&panel, wxID_ANY, ToWx(text));
}

wxButton* MakeButton(wxWindow& panel, std::string_view name, std::string_view label) {
  auto* const button = new wxButton(&panel, wxID_ANY, ToWx(label));
  NameControl(*button, name);
  return button;
}

PathRow AddPathRow(wxWindow& panel, wxSizer& sizer, std::string_view label, std::string_view pathName,
                   std::string_view buttonName) {
  sizer.Add(MakeLabel(panel, label), wxSizerFlags().Border(wxBOTTOM, Gap(panel) / 2));
  auto* const path = new wxTextCtrl(&panel, wxID_ANY, {}, wxDefaultPosition, wxDefaultSize, wxTE_READONLY);
  FitHeight(*path);
  path->DisableFocusFromKeyboard();  // the button beside it is where the keyboard goes
  NameControl(*path, pathName, label);
  wxButton* const button = MakeButton(panel, buttonName, panel_text::browse);
  auto* const row = new wxBoxSizer(wxHORIZONTAL);
  row->Add(path, wxSizerFlags(1).CentreVertical().Border(wxRIGHT, Gap(panel)));
  row->Add(button, wxSizerFlags().CentreVertical());
  sizer.Add(row, wxSizerFlags().Expand().Border(wxBOTTOM, 2 * Gap(panel)));
  return {.path = path, .button = button};
}

void ShowPath(wxTextCtrl& field, std::string_view path) {
  field.ChangeValue(ToWx(path));
  field.SetInsertionPointEnd();  // the name at a path's end says more than its beginning
  field.SetToolTip(ToWx(path));
}

}  // namespace tolvan
