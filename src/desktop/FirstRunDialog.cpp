#include "desktop/FirstRunDialog.h"

#include <wx/button.h>
#include <wx/checkbox.h>
#include <wx/sizer.h>

#include "desktop/Controls.h"
#include "desktop/WindowParts.h"
#include "services/ResourceTexts.h"

namespace tolvan {
FirstRunDialog::FirstRunDialog(FirstRun& logic)
    : wxDialog(nullptr, wxID_ANY, ToWx(ResourceText(text_id::windowCaption))), logic_(logic) {
  NameControl(*this, "primeraVez");
  auto* const column = new wxBoxSizer(wxVERTICAL);
  column->SetMinSize(WidthScaledToText(*this, 430), -1);
  AddParagraph(*this, *column, logic_.Greeting());
  AddChoice(*column, "bDemostracion", "Crear una tienda de &demostración…",
            "Con artículos y ventas inventados, para conocer el programa sin riesgo.",
            [this] { Take(logic_.bDemostracion_Click(remember_->GetValue())); });
  AddChoice(*column, "bElegir", "&Elegir la configuración…", "El archivo tolvan.ini que preparó su técnico.",
            [this] { Take(logic_.bElegir_Click(remember_->GetValue())); });
  AddChoice(*column, "bAyuda", "A&yuda", "Qué es una configuración y dónde está el manual.",
            [this] { logic_.bAyuda_Click(); });
  remember_ = new wxCheckBox(this, wxID_ANY, ToWx("Abrir &siempre lo que escoja ahora"));
  NameControl(*remember_, "chkRecordar");
  remember_->SetValue(true);
  column->Add(remember_, wxSizerFlags().Border(wxBOTTOM, 2 * Gap(*this)));
  auto* const close = new wxButton(this, wxID_CANCEL, ToWx("&Cerrar"));
  NameControl(*close, "bCerrar");
  column->Add(close, wxSizerFlags().Right());
  auto* const all = new wxBoxSizer(wxVERTICAL);
  all->Add(column, wxSizerFlags(1).Expand().Border(wxALL, 2 * Gap(*this)));
  SetSizer(all);
  FitToScreen(*this, {});
  CentreOnScreen();
  FindWindow("bDemostracion")->SetFocus();
}

void FirstRunDialog::AddChoice(wxSizer& column, std::string_view name, std::string_view label,
                               std::string_view explanation, const std::function<void()>& clicked) {
  wxButton* const button = MakeButton(*this, name, label);
  button->Bind(wxEVT_BUTTON, [clicked](wxCommandEvent&) { clicked(); });
  column.Add(button, wxSizerFlags().Expand().Border(wxBOTTOM, Gap(*this) / 2));
  AddParagraph(*this, column, explanation);
}

void FirstRunDialog::Take(const std::optional<std::string>& configuration) {
  if (!configuration) return;
  chosen_ = *configuration;
  EndModal(wxID_OK);
}

}  // namespace tolvan
