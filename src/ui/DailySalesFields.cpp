#include "ui/DailySalesFields.h"

#include <algorithm>
#include <array>
#include <utility>
#include <vector>

#include "base/NumberText.h"
#include "base/Text.h"
#include "export/DailySalesExport.h"
#include "services/ResourceTexts.h"

namespace tolvan {
namespace {

constexpr std::int16_t enter = 13;
constexpr std::array textBoxes{control::codigoTienda, control::nombreArchivo, control::email};
constexpr std::array savedFields{control::codigoTienda, control::fechaMovimiento, control::horaFinJornada,
                                 control::nombreArchivo, control::email};

/// What the file helper's cleaning makes of an empty name.
constexpr std::string_view cleanedEmptyName = "_";

std::string AsSentence(const std::string& text) {
  const std::string first(FirstCharacters(text, 1));
  return text.empty() ? text : ToUpper(first) + text.substr(first.size()) + ".";
}

bool IsTextBox(std::string_view controlName) {
  for (const std::string_view each : textBoxes) {
    if (each == controlName) return true;
  }
  return false;
}

/// The numbers between separators; nothing when a piece is anything but digits, at most `longest` of them.
std::optional<std::vector<int>> NumbersOf(std::string_view text, std::string_view separators, std::size_t longest) {
  std::string plain(TrimBlanks(text));
  for (char& each : plain) {
    if (separators.find(each) != std::string_view::npos) each = separators.front();
  }
  std::vector<int> numbers;
  for (const std::string_view piece : Split(plain, separators.front())) {
    const bool digits = std::all_of(piece.begin(), piece.end(), [](char each) { return each >= '0' && each <= '9'; });
    if (!digits || piece.empty() || piece.size() > longest) return std::nullopt;
    numbers.push_back(*ParseInteger(piece));
  }
  return numbers;
}

}  // namespace

std::string DateText(Date date) {
  return PaddedNumber(date.Day(), 2) + "/" + PaddedNumber(date.Month(), 2) + "/" + PaddedNumber(date.Year(), 4);
}

std::optional<Date> ParseDateText(std::string_view text) {
  constexpr int firstYear = 1900;
  const auto parts = NumbersOf(text, "/-.", 4);
  if (!parts || parts->size() != 3) return std::nullopt;
  const int typed = parts->at(2);
  const int year = typed < 100 ? 2000 + typed : typed;
  if (year < firstYear) return std::nullopt;
  return Date::FromExactParts(year, parts->at(1), parts->at(0));
}

std::string TimeText(TimeOfDay time) {
  return PaddedNumber(time.hour, 2) + ":" + PaddedNumber(time.minute, 2);
}

std::optional<TimeOfDay> ParseTimeText(std::string_view text) {
  const auto parts = NumbersOf(text, ":.", 2);
  if (!parts || parts->size() > 2) return std::nullopt;
  const TimeOfDay time{.hour = parts->front(), .minute = parts->size() == 2 ? parts->back() : 0};
  if (time.hour > 23 || time.minute > 59) return std::nullopt;
  return time;
}

TimeOfDay Moved(TimeOfDay time, int minutes) {
  constexpr int day = 24 * 60;
  const int moved = ((time.hour * 60 + time.minute + minutes) % day + day) % day;
  return {.hour = moved / 60, .minute = moved % 60};
}

DailySalesFields LoadFields(const ComponentContext& context) {
  const ImpExpSettings& settings = context.settings;
  FileHelper& files = context.Files();
  DailySalesFields fields;
  fields.storeCode = settings.Text(Setting::CodigoTienda);
  fields.date = context.services.SystemClock().Today();
  const TimeOfDay endOfDay{.hour = settings.Integer(Setting::HoraFinalVentaHoras),
                           .minute = settings.Integer(Setting::HoraFinalVentaMinutos)};
  const bool isTime = endOfDay.hour >= 0 && endOfDay.hour < 24 && endOfDay.minute >= 0 && endOfDay.minute < 60;
  if (isTime) fields.endOfDay = endOfDay;
  fields.folder = settings.Text(Setting::CarpetaDestino);
  if (fields.folder.empty()) {
    fields.folder =
        files.Join(files.Join(context.services.ApplicationFolder(), "Exportar"), ResourceText(text_id::dailySalesFile));
  }
  fields.sendsMail = settings.Checked(Setting::EnviarEmail);
  fields.address = settings.Text(Setting::EnviarDireccionEmail);
  fields.fileName = CleanForcedName(files, settings.Text(Setting::NombreArchivo));
  return fields;
}

void StoreFields(const DailySalesFields& fields, ImpExpSettings& settings) {
  settings.SetText(Setting::CodigoTienda, fields.storeCode);
  settings.SetInteger(Setting::FechaReporteAnno, fields.date.Year());
  settings.SetInteger(Setting::FechaReporteMes, fields.date.Month());
  settings.SetInteger(Setting::FechaReporteDia, fields.date.Day());
  settings.SetText(Setting::CarpetaDestino, fields.folder);
  const TimeOfDay endOfDay = fields.endOfDay.value_or(TimeOfDay());
  settings.SetInteger(Setting::HoraFinalVentaHoras, endOfDay.hour);
  settings.SetInteger(Setting::HoraFinalVentaMinutos, endOfDay.minute);
  settings.SetChecked(Setting::EnviarEmail, fields.sendsMail);
  settings.SetText(Setting::EnviarDireccionEmail, fields.address);
  settings.SetText(Setting::NombreArchivo, fields.fileName);
}

void ShowFields(const DailySalesFields& fields, const FileHelper& files, OptionsView& view) {
  view.SetText(control::codigoTienda, fields.storeCode);
  view.SetDate(control::fechaMovimiento, fields.date);
  if (fields.endOfDay) view.SetTime(control::horaFinJornada, *fields.endOfDay);
  view.SetText(control::carpetaDestino, files.FormatForDisplay(fields.folder));
  view.SetChecked(control::enviarEmail, fields.sendsMail);
  view.SetEnabled(control::email, fields.sendsMail);
  view.SetText(control::email, fields.address);
  view.SetText(control::nombreArchivo, fields.fileName);
}

DailySalesFields ReadFields(const OptionsView& view, std::string folder) {
  return {.storeCode = view.Text(control::codigoTienda),
          .date = view.DateOf(control::fechaMovimiento),
          .endOfDay = view.TimeOf(control::horaFinJornada),
          .folder = std::move(folder),
          .sendsMail = view.Checked(control::enviarEmail),
          .address = view.Text(control::email),
          .fileName = view.Text(control::nombreArchivo)};
}

std::string CleanForcedName(const FileHelper& files, std::string_view name) {
  std::string cleaned = files.CleanFileName(name, true, true);
  return cleaned == cleanedEmptyName ? std::string() : cleaned;
}

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
  if (!objection.empty()) ShowObjection(objection);
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
  ShowObjection(objection.text);
  view_->Focus(objection.controlName);
}

void FieldRules::PutInOrder(std::string_view controlName) {
  const std::string typed = view_->Text(controlName);
  if (controlName == control::codigoTienda) {
    view_->SetText(controlName, TrimBlanks(typed));
  } else if (controlName == control::nombreArchivo) {
    view_->SetText(controlName, CleanForcedName(context_->Files(), typed));
  } else if (controlName == control::fechaMovimiento) {
    if (const auto date = ParseDateText(typed)) view_->SetDate(controlName, *date);
  } else if (controlName == control::horaFinJornada) {
    if (const auto time = ParseTimeText(typed)) view_->SetTime(controlName, *time);
  }
}

std::string FieldRules::ObjectionTo(std::string_view controlName) const {
  const std::string typed = view_->Text(controlName);
  if (controlName == control::codigoTienda) return AsSentence(StoreCodeObjection(typed));
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

void FieldRules::ShowObjection(std::string_view text) const {
  context_->UserDialogs().ShowMessage(MessageIcon::Exclamation, ResourceText(text_id::windowCaption), text);
}

void FieldRules::chk_Click() {
  view_->SetEnabled(control::email, view_->Checked(control::enviarEmail));
}

}  // namespace tolvan
