#include "desktop/TextQuestion.h"

#include <wx/sizer.h>
#include <wx/stattext.h>
#include <wx/textctrl.h>

#include "desktop/ControlName.h"
#include "desktop/DialogButtons.h"
#include "desktop/TextScale.h"
#include "desktop/WxText.h"

namespace tolvan {

TextQuestion::TextQuestion(wxWindow* parent, const wxString& title, const wxString& prompt, const wxString& initial)
    : wxDialog(parent, wxID_ANY, title) {
  NameControl(*this, "pregunta");
  auto* const label = new wxStaticText(this, wxID_ANY, {});
  label->SetLabelText(prompt);
  label->Wrap(WidthScaledToText(*this, 460));
  answer_ = new wxTextCtrl(this, wxID_ANY, initial);
  FitHeight(*answer_);
  NameControl(*answer_, "txtRespuesta", FromWx(prompt));
  auto* const all = new wxBoxSizer(wxVERTICAL);
  all->Add(label, wxSizerFlags().Border(wxALL, FromDIP(12)));
  all->Add(answer_, wxSizerFlags().Expand().Border(wxLEFT | wxRIGHT, FromDIP(12)));
  AddDialogButtons(*this, *all, "bPreguntaAceptar", "bPreguntaCancelar");
  SetSizerAndFit(all);
  CentreOnParent();
  answer_->SelectAll();
  answer_->SetFocus();
}

wxString TextQuestion::Answer() const {
  return answer_->GetValue();
}

}  // namespace tolvan
