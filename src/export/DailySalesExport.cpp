#include "export/DailySalesExport.h"

#include <cstdlib>

#include "base/NumberText.h"
#include "base/Text.h"
#include "export/StoredDate.h"
#include "export/SumDaySales.h"
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

DailySalesResult DailySalesExport::Run(bool interactive, std::string& errorText) {
  DailySalesResult result;
  try {
    Export(interactive, result, errorText);
  } catch (const HostError& error) {
    errorText.append(lineBreak).append(TextForPeople(error));
  }
  return result;
}

void DailySalesExport::Export(bool interactive, DailySalesResult& result, std::string& errorText) {
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
  result.record = FormatDailySales(record, total);
  const std::string forcedName = settings.Text(Setting::NombreArchivo);
  result.path = context_->Files().NormalizeFolder(settings.Text(Setting::CarpetaDestino)) +
                (forcedName.empty() ? DailySalesFileName(record.reportDate) : forcedName);
  if (!Write(result, errorText)) return;
  if (settings.Integer(Setting::EnviarEmail) == 0) {
    result.succeeded = true;
    return;
  }
  const MailOutcome outcome = Send(result.path, interactive);
  result.sent = result.succeeded = outcome.status == MailStatus::Sent;
  if (!result.sent) errorText.append(lineBreak).append(TextOf(outcome));
}

bool DailySalesExport::Write(DailySalesResult& result, std::string& errorText) {
  // An old file must not be taken for today's when today's cannot be written, so it goes first, come what may.
  static_cast<void>(context_->Files().DeleteFile(result.path));
  if (context_->services.DiagnosticFlag()) {
    Dialogs& dialogs = context_->UserDialogs();
    dialogs.ShowMessage(MessageIcon::None, context_->application.ProductName(), result.record);
    dialogs.ShowMessage(MessageIcon::None, context_->application.ProductName(), result.path);
  }
  result.writeFailure = context_->Files().WriteTextFile(result.record, result.path);
  result.written = !result.writeFailure;
  if (!result.written) {
    errorText.append(lineBreak).append(ResourceText(text_id::pathError)).append(lineBreak).append(result.path);
  }
  return result.written;
}

MailOutcome DailySalesExport::Send(const std::string& path, bool interactive) {
  const std::string recipient = context_->settings.Text(Setting::EnviarDireccionEmail);
  MailService& mail = context_->application.Mail();
  if (!recipient.empty()) return mail.SendFile(path, recipient);
  if (!interactive) return {MailStatus::NotSent, "No hay dirección e-mail del destinatario."};
  return mail.SendFileToChosenRecipient(path);
}

}  // namespace tolvan
