#include "ui/FieldRules.h"

#include <array>
#include <string>

#include "base/Text.h"
#include "services/ResourceTexts.h"
#include "ui/frmOpciones.h"

namespace tolvan {
namespace {

constexpr std::int16_t enter = 13;
constexpr std::array textBoxes{control::codigoTienda, control::nombreArchivo, control::email};

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
  if (controlName == control::codigoTienda) {
    const std::string typed = view_->Text(controlName);
    view_->SetText(controlName, TrimBlanks(typed));
  } else if (controlName == control::nombreArchivo) {
    const std::string typed = view_->Text(controlName);
    const std::string name = context_->Files().CleanFileName(typed, true, true);
    view_->SetText(controlName, name == frmOpciones::emptyFileName ? std::string() : name);
  } else if (controlName == control::email) {
    return ValidateEmail();
  }
  return true;
}

bool FieldRules::ValidateEmail() {
  // Without a tick nothing is sent, and without an address the recipient is asked for when the file is sent.
  const std::string address = view_->Text(control::email);
  if (!view_->Checked(control::enviarEmail) || address.empty()) return true;
  if (context_->services.IsEmailAddress(address)) return true;
  context_->UserDialogs().ShowMessage(MessageIcon::Exclamation, ResourceText(text_id::windowCaption),
                                      ResourceText(text_id::invalidMailAddress));
  return false;
}

bool FieldRules::ValidateAll() {
  for (const std::string_view each : textBoxes) {
    if (Validate(each)) continue;
    view_->Focus(each);
    return false;
  }
  return true;
}

void FieldRules::chk_Click() {
  view_->SetEnabled(control::email, view_->Checked(control::enviarEmail));
}

}  // namespace tolvan
