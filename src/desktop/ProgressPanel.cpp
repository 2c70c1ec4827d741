#include "desktop/ProgressPanel.h"

#include <wx/gauge.h>
#include <wx/sizer.h>
#include <wx/stattext.h>

#include "desktop/ControlName.h"
#include "desktop/WxText.h"

namespace tolvan {
namespace {

constexpr int steps = 1000;  // finer than any bar is wide, so that most reports change nothing on the screen

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

}  // namespace tolvan
