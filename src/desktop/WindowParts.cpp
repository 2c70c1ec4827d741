#include "desktop/WindowParts.h"

#include <wx/app.h>
#include <wx/button.h>
#include <wx/dialog.h>
#include <wx/sizer.h>
#include <wx/textctrl.h>

#include "desktop/Controls.h"
#include "services/ResourceTexts.h"
#include "ui/OptionsView.h"

namespace tolvan {
namespace {

constexpr int firstTextWidth = 430;
constexpr int narrowestText = 160;

}  // namespace

WrappedText::WrappedText(wxWindow* parent, std::string_view text, int widest)
    : wxStaticText(parent, wxID_ANY, {}, wxDefaultPosition, wxDefaultSize, wxST_NO_AUTORESIZE),
      text_(ToWxMessage(text)) {
  WrapTo(widest);
  Bind(wxEVT_SIZE, [this](wxSizeEvent& event) {
    event.Skip();
    const int width = event.GetSize().x;
    // The new height is asked for once the layout that is going on has ended.
    if (width > 1 && width != wrapped_) CallAfter([this, width] { WrapTo(width); });
  });
}

void WrappedText::SetWrapped(std::string_view text) {
  text_ = ToWxMessage(text);
  WrapTo(wrapped_);
}

void WrappedText::WrapTo(int width) {
  wrapped_ = width;
  SetLabelText(text_);
  Wrap(width);
  InvalidateBestSize();
  const wxSize size(GetMinWidth(), GetBestSize().y);
  if (size == GetMinSize()) return;
  SetMinSize(size);
  if (GetParent()->GetSizer() != nullptr) GetParent()->Layout();
}

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

wxButton* AddDialogButtons(wxDialog& dialog, wxSizer& content, std::string_view acceptName,
                           std::string_view cancelName) {
  auto* const accept = new wxButton(&dialog, wxID_OK, ToWx(ResourceText(text_id::acceptButton)));
  NameControl(*accept, acceptName);
  auto* const cancel = new wxButton(&dialog, wxID_CANCEL, ToWx(ResourceText(text_id::cancelButton)));
  NameControl(*cancel, cancelName);
  accept->SetDefault();
  auto* const row = new wxBoxSizer(wxHORIZONTAL);
  row->Add(accept, wxSizerFlags().Border(wxRIGHT, dialog.FromDIP(8)));
  row->Add(cancel);
  content.Add(row, wxSizerFlags().Right().Border(wxALL, dialog.FromDIP(12)));
  return accept;
}

wxWindow* DialogParent() {
  for (auto node = wxTopLevelWindows.GetLast(); node != nullptr; node = node->GetPrevious()) {
    const auto* dialog = dynamic_cast<wxDialog*>(node->GetData());
    if (dialog != nullptr && dialog->IsModal()) return node->GetData();
  }
  return wxTheApp->GetTopWindow();
}

}  // namespace tolvan
