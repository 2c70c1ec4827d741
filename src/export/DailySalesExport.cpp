#include "export/DailySalesExport.h"

#include <cstdlib>
#include <optional>
#include <utility>

#include "base/NumberText.h"
#include "base/Text.h"
#include "export/SalesTotals.h"
#include "host/HostError.h"
#include "services/ResourceTexts.h"

namespace tolvan {
namespace {

/// The display pattern "00".
std::string TwoDigits(int number) {
  return (number < 0 ? "-" : "") + PaddedNumber(std::abs(number), 2);
}

std::int32_t TextIdOf(MailStatus status) {
  switch (status) {
    case MailStatus::NotSent:
      return text_id::cannotSendByMail;
    case MailStatus::Refused:
      return text_id::mailSendingError;
    case MailStatus::LoginRefused:
      return text_id::mailLoginError;
    case MailStatus::OutOfMemory:
      return text_id::mailOutOfMemory;
    case MailStatus::AttachmentUnreadable:
      return text_id::mailAttachmentAccess;
    case MailStatus::AttachmentFailed:
      return text_id::mailAttachmentFailure;
    case MailStatus::CancelledByUser:
      return text_id::mailCancelled;
    case MailStatus::NoService:
      return text_id::mailServiceMissing;
    case MailStatus::Unspecified:
      return text_id::mailUnspecifiedError;
    case MailStatus::Sent:
      break;
  }
  return text_id::mailUndefinedError;
}

std::string TextOf(const MailOutcome& outcome) {
  std::string text(ResourceText(TextIdOf(outcome.status)));
  if (!outcome.detail.empty()) text.append(lineBreak).append(outcome.detail);
  return text;
}

}  // namespace

std::string FormatDailySales(const DailySalesRecord& record, Currency total) {
  const std::string quote = record.quoted ? "\"" : "";
  const Date date = record.reportDate;
  std::string line = record.storeCode + ',' + total.ToRoundedText(0) + ',';
  line += quote + TwoDigits(record.endHours) + ':' + TwoDigits(record.endMinutes) + quote + ',';
  line += quote + TwoDigits(date.Day()) + '/' + TwoDigits(date.Month()) + '/' + std::to_string(date.Year()) + quote;
  if (record.quoted) line += ',';  // deliberate: only the quoted form has a trailing separator
  return line;
}

Date StoredDate(const ImpExpSettings& settings, const DateSettings& parts, std::string_view what) {
  const int year = settings.Integer(parts.year);
  const int month = settings.Integer(parts.month);
  const int day = settings.Integer(parts.day);
  const bool plausible = year >= 1 && year <= 9999 && std::abs(month) <= 1200 && std::abs(day) <= 36600;
  if (!plausible) {
    throw HostError(HostErrorKind::InvalidValue, "la " + std::string(what) + " guardada no es una fecha: día " +
                                                     std::to_string(day) + ", mes " + std::to_string(month) + ", año " +
                                                     std::to_string(year));
  }
  return Date::FromParts(year, month, day);
}

Date StoredReportDate(const ImpExpSettings& settings) {
  return StoredDate(settings, reportDateSettings, "fecha de reporte");
}

std::string DailySalesFileName(Date reportDate) {
  return TwoDigits(reportDate.Year() % 100) + TwoDigits(reportDate.Month()) + TwoDigits(reportDate.Day()) + ".txt";
}

std::string StoreCodeObjection(std::string_view storeCode) {
  const std::string_view lost = FirstBeyondWindows1252(storeCode);
  if (lost.empty()) return {};
  return "la opción MicrosExp_CodigoTienda (código de la empresa) tiene el carácter «" + std::string(lost) +
         "», que no existe en la codificación del archivo (Windows-1252)";
}

ActionReport DailySalesExport::Run(bool interactive) {
  ActionReport report;
  DailySalesFile file;
  try {
    Export(interactive, file, report);
  } catch (const HostError& error) {
    report.text.append(lineBreak).append(TextForPeople(error));
  }
  report.details = std::move(file);
  return report;
}

void DailySalesExport::Export(bool interactive, DailySalesFile& file, ActionReport& report) {
  const ImpExpSettings& settings = context_->settings;
  const Date yesterday = context_->services.SystemClock().Today().PlusDays(-1);
  const DailySalesRecord record{.storeCode = settings.Text(Setting::CodigoTienda),
                                .endHours = settings.Integer(Setting::HoraFinalVentaHoras),
                                .endMinutes = settings.Integer(Setting::HoraFinalVentaMinutos),
                                .reportDate = interactive ? StoredReportDate(settings) : yesterday,
                                .quoted = settings.Integer(Setting::MostrarComillas) != 0};
  const std::string objection = StoreCodeObjection(record.storeCode);
  if (!objection.empty()) throw HostError(HostErrorKind::InvalidValue, objection);
  const Currency total = SumDaySales(context_->application.Database(), record.reportDate, false);
  file.record = FormatDailySales(record, total);
  const std::string forcedName = settings.Text(Setting::NombreArchivo);
  file.path = context_->Files().NormalizeFolder(settings.Text(Setting::CarpetaDestino)) +
              (forcedName.empty() ? DailySalesFileName(record.reportDate) : forcedName);
  if (!Write(file, report)) return;
  if (settings.Integer(Setting::EnviarEmail) == 0) {
    report.done = true;
    return;
  }
  const MailOutcome outcome = Send(file.path, interactive);
  file.sent = report.done = outcome.status == MailStatus::Sent;
  if (!file.sent) report.text.append(lineBreak).append(TextOf(outcome));
}

bool DailySalesExport::Write(DailySalesFile& file, ActionReport& report) {
  // An old file must not be taken for today's when today's cannot be written, so it goes first, come what may.
  static_cast<void>(context_->Files().DeleteFile(file.path));
  if (context_->services.DiagnosticFlag()) {
    Dialogs& dialogs = context_->UserDialogs();
    dialogs.ShowMessage(MessageIcon::None, context_->application.ProductName(), file.record);
    dialogs.ShowMessage(MessageIcon::None, context_->application.ProductName(), file.path);
  }
  const std::optional<HostError> failure = context_->Files().WriteTextFile(file.record, file.path);
  file.written = !failure;
  if (failure) {
    report.text.append(lineBreak).append(ResourceText(text_id::pathError)).append(lineBreak).append(file.path);
    report.cause = TextForPeople(*failure);
  }
  return file.written;
}

MailOutcome DailySalesExport::Send(const std::string& path, bool interactive) {
  const std::string recipient = context_->settings.Text(Setting::EnviarDireccionEmail);
  MailService& mail = context_->application.Mail();
  if (!recipient.empty()) return mail.SendFile(path, recipient);
  if (!interactive) return {MailStatus::NotSent, "No hay dirección e-mail del destinatario."};
  return mail.SendFileToChosenRecipient(path);
}

}  // namespace tolvan
