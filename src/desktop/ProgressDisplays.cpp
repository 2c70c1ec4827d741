#include "desktop/ProgressDisplays.h"

#include <wx/button.h>
#include <wx/gauge.h>
#include <wx/sizer.h>
#include <wx/stattext.h>

#include "desktop/Controls.h"
#include "desktop/WindowParts.h"
#include "ui/OptionsView.h"

namespace tolvan {
namespace {

constexpr int steps = 1000;  // finer than any bar is wide, so that most reports change nothing on the screen
constexpr std::chrono::milliseconds textPause{40};

}  // namespace

ProgressPanel::ProgressPanel(wxWindow* parent)
    : wxPanel(parent),
      caption_(new wxStaticText(this, wxID_ANY, {}, wxDefaultPosition, wxDefaultSize,
                                wxST_NO_AUTORESIZE | wxST_ELLIPSIZE_END)),
      bar_(new wxGauge(this, wxID_ANY, steps)) {
  NameControl(*this, "pbProgreso");
  NameControl(*caption_, "lbProgreso");
  NameControl(*bar_, "pb01", "Progreso");
  auto* const column = new wxBoxSizer(wxVERTICAL);
  column->Add(caption_, wxSizerFlags().Expand().Border(wxBOTTOM, FromDIP(2)));
  column->Add(bar_, wxSizerFlags().Expand());
  SetSizer(column);
}

void ProgressPanel::SetVisible(bool visible) {
  if (IsShown() == visible) return;
  Show(visible);
  GetParent()->Layout();
}

void ProgressPanel::SetMin(std::int32_t minimum) {
  minimum_ = minimum;
}

void ProgressPanel::SetMax(std::int32_t maximum) {
  maximum_ = maximum;
}

void ProgressPanel::SetValue(std::int32_t value) {
  const std::int64_t range = maximum_ > minimum_ ? std::int64_t{maximum_} - minimum_ : 1;
  const int step = static_cast<int>((std::int64_t{value} - minimum_) * steps / range);
  if (step == shown_) return;
  shown_ = step;
  bar_->SetValue(wxClip(step, 0, steps));
}

void ProgressPanel::SetCaption(std::string_view text) {
  caption_->SetLabelText(ToWx(text));
}

WaitDialog::WaitDialog(wxWindow* parent, DesktopWork& work)
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

WaitDialog::~WaitDialog() {
  work_.SetStatus(nullptr);
}

void WaitDialog::SetText(std::string_view text) {
  // "Analizando fila 12345": more often than the eye follows is not drawn.
  const auto now = std::chrono::steady_clock::now();
  if (now - shownAt_ < textPause && !text_->GetLabel().empty() && maximum_ == 0) return work_.ProcessPending();
  shownAt_ = now;
  text_->SetLabelText(ToWx(text));
  work_.ProcessPending();
}

void WaitDialog::SetRange(std::int32_t maximum) {
  maximum_ = wxMax(maximum, 1);
  value_ = 0;
  bar_->SetRange(maximum_);
  bar_->Show();
  Fit();
  Layout();
}

void WaitDialog::Advance() {
  if (value_ >= maximum_) return;
  ++value_;
  const auto now = std::chrono::steady_clock::now();
  if (value_ < maximum_ && now - shownAt_ < textPause) return;
  shownAt_ = now;
  bar_->SetValue(value_);
  work_.ProcessPending();
}

void WaitDialog::Stop() {
  work_.Stop();
  textBeforeWait_ = wxString::FromUTF8("Deteniendo…");
  text_->SetLabelText(textBeforeWait_);
}

void WaitDialog::ShowWait(std::string_view text) {
  textBeforeWait_ = text_->GetLabelText();
  text_->SetLabelText(ToWx(text));
  const wxSize needed = text_->GetTextExtent(text_->GetLabelText());
  if (needed.x <= text_->GetSize().x) return;
  text_->SetMinSize(wxSize(needed.x + FromDIP(8), -1));
  Fit();
  CentreOnParent();
}

void WaitDialog::EndWait() {
  text_->SetLabelText(textBeforeWait_);
}

}  // namespace tolvan
