#include "ui/frmOpciones.h"

#include <stdexcept>

#include "base/Text.h"
#include "export/SalesUpload.h"
#include "services/ComponentContext.h"
#include "services/ResourceTexts.h"

namespace tolvan {
namespace {}  // namespace

frmOpciones::frmOpciones(const ComponentContext& context, OpcionesView& view) : context_(&context), view_(&view) {
  SetRoutine(action::dailySalesFile,
             [this](bool interactive, std::string& errorText, bool&) { return Exp_Micros_01(interactive, errorText); });
  SetRoutine(action::salesUpload, [this](bool, std::string& errorText, bool&) {
    const ActionReport report = UploadSales(*context_);
    errorText += report.text;
    return report.done;
  });
}

void frmOpciones::LlenarCodigo() {
  view_->SetText(control::codigoTienda, context_->settings.Text(Setting::CodigoTienda));
}

void frmOpciones::bGuardar_Click() {
  outcome_ = {.action = currentAction_};
  if (SaveAll()) ImpExp(true);
}

bool frmOpciones::local_LlenarForm(int actionNumber) {
  if (actionNumber == action::none || actionNumber == action::dailySalesFile) FillDailySales();
  return true;
}

void frmOpciones::local_FocoPrimerCampo(int actionNumber) {
  if (actionNumber == action::dailySalesFile) view_->Focus(control::codigoTienda);
}

void frmOpciones::Cargar() {
  local_LlenarForm(action::none);
}

void frmOpciones::ImpExp(bool interactive) {
  outcome_ = {.action = currentAction_};
  if (currentAction_ == action::none) {
    if (interactive) {
      context_->UserDialogs().ShowMessage(MessageIcon::Exclamation, Caption(), ResourceText(text_id::chooseCategory));
    }
    return;
  }
  const auto routine = routines_.find(currentAction_);
  if (routine == routines_.end()) return;
  outcome_.ran = true;
  bool silent = false;
  outcome_.succeeded = routine->second(interactive, outcome_.errorText, silent);
  const bool told = silent && (outcome_.succeeded || outcome_.errorText.empty());
  if (interactive && !told) Report();
}

bool frmOpciones::Exp_Micros_01(bool interactive, std::string& errorText) {
  dailySales_ = DailySalesExport(*context_).Run(interactive);
  errorText += dailySales_.text;
  return dailySales_.done;
}

void frmOpciones::SelectAction(int actionNumber) {
  if (actionNumber < action::none || actionNumber > action::last) throw std::out_of_range("no such action");
  currentAction_ = actionNumber;
}

void frmOpciones::SavePanel(int actionNumber) {
  if (actionNumber == action::none || actionNumber == action::dailySalesFile) SaveDailySales();
}

void frmOpciones::ChooseFolder() {
  const auto chosen = context_->UserDialogs().PickFolder(ResourceText(text_id::folderPickerTitle),
                                                         context_->Files().NormalizeFolder(folder_));
  if (!chosen || chosen->empty()) return;
  folder_ = *chosen;
  ShowFolder();
}

void frmOpciones::SetRoutine(int actionNumber, ActionRoutine routine) {
  routines_.insert_or_assign(actionNumber, std::move(routine));
}

std::string frmOpciones::Caption() const {
  return std::string(ResourceText(text_id::windowCaption));
}

void frmOpciones::FillDailySales() {
  const ImpExpSettings& settings = context_->settings;
  LlenarCodigo();
  view_->SetDate(control::fechaMovimiento, context_->services.SystemClock().Today());
  const TimeOfDay endOfDay{.hour = settings.Integer(Setting::HoraFinalVentaHoras),
                           .minute = settings.Integer(Setting::HoraFinalVentaMinutos)};
  const bool isTime = endOfDay.hour >= 0 && endOfDay.hour < 24 && endOfDay.minute >= 0 && endOfDay.minute < 60;
  if (isTime) view_->SetTime(control::horaFinJornada, endOfDay);
  folder_ = settings.Text(Setting::CarpetaDestino);
  if (folder_.empty()) {
    FileHelper& files = context_->Files();
    folder_ = files.Join(files.Join(context_->services.ApplicationFolder(), "Exportar"),
                         ResourceText(text_id::dailySalesFile));
  }
  ShowFolder();
  const bool sendsMail = settings.Checked(Setting::EnviarEmail);
  view_->SetChecked(control::enviarEmail, sendsMail);
  view_->SetEnabled(control::email, sendsMail);
  view_->SetText(control::email, settings.Text(Setting::EnviarDireccionEmail));
  const std::string name = context_->Files().CleanFileName(settings.Text(Setting::NombreArchivo), true, true);
  view_->SetText(control::nombreArchivo, name == emptyFileName ? std::string() : name);
}

void frmOpciones::SaveDailySales() {
  ImpExpSettings& settings = context_->settings;
  settings.SetText(Setting::CodigoTienda, view_->Text(control::codigoTienda));
  const Date date = view_->DateOf(control::fechaMovimiento);
  settings.SetInteger(Setting::FechaReporteAnno, date.Year());
  settings.SetInteger(Setting::FechaReporteMes, date.Month());
  settings.SetInteger(Setting::FechaReporteDia, date.Day());
  settings.SetText(Setting::CarpetaDestino, folder_);
  const TimeOfDay endOfDay = view_->TimeOf(control::horaFinJornada);
  settings.SetInteger(Setting::HoraFinalVentaHoras, endOfDay.hour);
  settings.SetInteger(Setting::HoraFinalVentaMinutos, endOfDay.minute);
  settings.SetChecked(Setting::EnviarEmail, view_->Checked(control::enviarEmail));
  settings.SetText(Setting::EnviarDireccionEmail, view_->Text(control::email));
  settings.SetText(Setting::NombreArchivo, view_->Text(control::nombreArchivo));
}

void frmOpciones::ShowFolder() {
  view_->SetText(control::carpetaDestino, context_->Files().FormatForDisplay(folder_));
}

bool frmOpciones::SaveAll() {
  std::string detail;
  try {
    SavePanel(action::none);
    context_->settings.Save();
    return true;
  } catch (const ApplicationError&) {
    // the text that follows says it all
  } catch (const HostError& error) {
    detail = std::string(lineBreak) + TextForPeople(error);
  }
  outcome_.errorText = std::string(ResourceText(text_id::cannotSaveSettings)) + detail;
  context_->UserDialogs().ShowMessage(MessageIcon::Exclamation, Caption(), outcome_.errorText);
  return false;
}

void frmOpciones::Report() {
  Dialogs& dialogs = context_->UserDialogs();
  if (outcome_.succeeded) {
    dialogs.ShowMessage(MessageIcon::Information, Caption(), ResourceText(text_id::success));
    return;
  }
  const std::string text =
      std::string(ResourceText(text_id::errorsHappened)) + std::string(lineBreak) + outcome_.errorText;
  dialogs.ShowMessage(MessageIcon::Exclamation, Caption(), text);
}

}  // namespace tolvan
