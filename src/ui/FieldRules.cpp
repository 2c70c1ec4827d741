#include "ui/FieldRules.h"

#include <array>

#include "base/Text.h"
#include "services/ResourceTexts.h"
#include "ui/FieldTexts.h"
#include "ui/frmOpciones.h"

namespace tolvan {
namespace {

constexpr std::int16_t enter = 13;
constexpr std::array textBoxes{control::codigoTienda, control::nombreArchivo, control::email};
constexpr std::array savedFields{control::codigoTienda, control::fechaMovimiento, control::horaFinJornada,
                                 control::nombreArchivo, control::email};

bool IsTextBox(std::string_view controlName) {
  for (const std::string_view each : textBoxes) {
    if (each == controlName) return true;
  }
  return false;
}

}  // namespace

void FieldRules::GotFocus(std::string_view controlName) {
  if (IsTextBox(controlName)) view_->SelectAll(controlName);
}

void FieldRules::KeyPress(std::string_view controlName, std::int16_t& keyCode) {
  if (keyCode != enter) return;
  if (controlName == control::horaFinJornada) {
    keyCode = 0;
    view_->Focus(control::nombreArchivo);
    return;
  }
  const bool validatesFirst = controlName == control::nombreArchivo || controlName == control::email;
  if (validatesFirst && !Validate(controlName)) {
    keyCode = 0;
    return;
  }
  EnterAsTab(keyCode, *view_);
}

bool FieldRules::Validate(std::string_view controlName) {
  PutInOrder(controlName);
  const std::string objection = ObjectionTo(controlName);
  if (!objection.empty()) Tell(objection);
  return objection.empty();
}

std::optional<FieldRules::Objection> FieldRules::FirstObjection() {
  for (const std::string_view each : savedFields) {
    PutInOrder(each);
    if (std::string text = ObjectionTo(each); !text.empty()) return Objection{.controlName = each, .text = text};
  }
  return std::nullopt;
}

void FieldRules::Refuse(const Objection& objection) {
  view_->Focus(objection.controlName);
  Tell(objection.text);
  view_->Focus(objection.controlName);
}

void FieldRules::PutInOrder(std::string_view controlName) {
  const std::string typed = view_->Text(controlName);
  if (controlName == control::codigoTienda) {
    view_->SetText(controlName, TrimBlanks(typed));
  } else if (controlName == control::nombreArchivo) {
    const std::string name = context_->Files().CleanFileName(typed, true, true);
    view_->SetText(controlName, name == frmOpciones::emptyFileName ? std::string() : name);
  } else if (controlName == control::fechaMovimiento) {
    if (const auto date = ParseDateText(typed)) view_->SetDate(controlName, *date);
  } else if (controlName == control::horaFinJornada) {
    if (const auto time = ParseTimeText(typed)) view_->SetTime(controlName, *time);
  }
}

std::string FieldRules::ObjectionTo(std::string_view controlName) {
  const std::string typed = view_->Text(controlName);
  if (controlName == control::fechaMovimiento && !ParseDateText(typed)) {
    return "La fecha \"" + typed + "\" no existe. Escriba día, mes y año; por ejemplo, 28/02/2026.";
  }
  if (controlName == control::horaFinJornada && !ParseTimeText(typed)) {
    return "La hora \"" + typed + "\" no existe. Escriba hora y minutos, de 00:00 a 23:59.";
  }
  // Without a tick nothing is sent, and without an address the recipient is asked for when the file is sent.
  const bool addressed = controlName == control::email && view_->Checked(control::enviarEmail) && !typed.empty();
  if (!addressed || context_->services.IsEmailAddress(typed)) return {};
  return std::string(ResourceText(text_id::invalidMailAddress));
}

void FieldRules::Tell(std::string_view text) const {
  context_->UserDialogs().ShowMessage(MessageIcon::Exclamation, ResourceText(text_id::windowCaption), text);
}

void FieldRules::chk_Click() {
  view_->SetEnabled(control::email, view_->Checked(control::enviarEmail));
}

}  // namespace tolvan
