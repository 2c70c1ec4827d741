#include "desktop/StatusDialog.h"

#include <wx/button.h>
#include <wx/gauge.h>
#include <wx/sizer.h>
#include <wx/stattext.h>

#include "desktop/ControlName.h"
#include "desktop/PanelParts.h"
#include "desktop/TextScale.h"
#include "desktop/WxText.h"
#include "ui/PanelTexts.h"

namespace tolvan {
namespace {

constexpr std::chrono::milliseconds textPause{40};

}  // namespace

StatusDialog::StatusDialog(wxWindow* parent, DesktopWork& work)
    : wxDialog(parent, wxID_ANY, wxString::FromUTF8("Favor espere"), wxDefaultPosition, wxDefaultSize, wxCAPTION),
      work_(work),
      text_(new wxStaticText(this, wxID_ANY, {}, wxDefaultPosition, wxDefaultSize, wxST_NO_AUTORESIZE)),
      bar_(new wxGauge(this, wxID_ANY, 1)),
      disabler_(this) {
  NameControl(*this, "estado");
  NameControl(*text_, "lbEstado");
  NameControl(*bar_, "pbEstado", "Progreso");
  wxButton* const stop = MakeButton(*this, "bDetener", panel_text::stop);
  stop->Bind(wxEVT_BUTTON, [this](wxCommandEvent&) { Stop(); });
  Bind(wxEVT_CLOSE_WINDOW, [this](wxCloseEvent& event) {
    event.Veto();
    Stop();
  });
  Bind(wxEVT_CHAR_HOOK, [this](wxKeyEvent& event) {
    if (event.GetKeyCode() == WXK_ESCAPE) return Stop();
    event.Skip();
  });
  auto* const column = new wxBoxSizer(wxVERTICAL);
  text_->SetMinSize(ScaledToText(*this, wxSize(320, -1)));
  column->Add(text_, wxSizerFlags().Expand().Border(wxALL, FromDIP(12)));
  column->Add(bar_, wxSizerFlags().Expand().Border(wxLEFT | wxRIGHT, FromDIP(12)));
  column->Add(stop, wxSizerFlags().Right().Border(wxALL, FromDIP(12)));
  bar_->Hide();
  SetSizerAndFit(column);
  CentreOnParent();
  Show();
  stop->SetFocus();
  work_.SetStatus(this);
}

StatusDialog::~StatusDialog() {
  work_.SetStatus(nullptr);
}

void StatusDialog::SetText(std::string_view text) {
  // "Analizando fila 12345": more often than the eye follows is not drawn.
  const auto now = std::chrono::steady_clock::now();
  if (now - shownAt_ < textPause && !text_->GetLabel().empty() && maximum_ == 0) return work_.ProcessPending();
  shownAt_ = now;
  text_->SetLabelText(ToWx(text));
  work_.ProcessPending();
}

void StatusDialog::SetRange(std::int32_t maximum) {
  maximum_ = wxMax(maximum, 1);
  value_ = 0;
  bar_->SetRange(maximum_);
  bar_->Show();
  Fit();
  Layout();
}

void StatusDialog::Advance() {
  if (value_ >= maximum_) return;
  ++value_;
  const auto now = std::chrono::steady_clock::now();
  if (value_ < maximum_ && now - shownAt_ < textPause) return;
  shownAt_ = now;
  bar_->SetValue(value_);
  work_.ProcessPending();
}

void StatusDialog::Stop() {
  work_.Stop();
  textBeforeWait_ = wxString::FromUTF8("Deteniendo…");
  text_->SetLabelText(textBeforeWait_);
}

void StatusDialog::ShowWait(std::string_view text) {
  textBeforeWait_ = text_->GetLabelText();
  text_->SetLabelText(ToWx(text));
  const wxSize needed = text_->GetTextExtent(text_->GetLabelText());
  if (needed.x <= text_->GetSize().x) return;
  text_->SetMinSize(wxSize(needed.x + FromDIP(8), -1));
  Fit();
  CentreOnParent();
}

void StatusDialog::EndWait() {
  text_->SetLabelText(textBeforeWait_);
}

}  // namespace tolvan
