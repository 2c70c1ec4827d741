#include "export/SalesUpload.h"

#include <algorithm>
#include <exception>

#include "base/Addresses.h"
#include "base/Text.h"
#include "export/DailySalesExport.h"
#include "export/SalesProtocol.h"
#include "export/SalesTotals.h"
#include "services/ResourceTexts.h"
#include "services/clsCallBackProgreso.h"

namespace tolvan {
namespace {

constexpr std::string_view page = "registrarventas.asp";
constexpr std::string_view answered = "200";
constexpr std::string_view accepted = "OK";
constexpr std::size_t mostShown = 60;

/// Why an exchange ended early; the text is the user's.
class UploadStopped : public std::exception {
 public:
  explicit UploadStopped(std::string text) : text_(std::move(text)) {}
  const char* what() const noexcept override { return text_.c_str(); }

 private:
  std::string text_;
};

/// What a server said, made fit for a message: not long, and without control characters.
std::string Quoted(std::string_view text) {
  const std::string_view shown = FirstCharacters(text, mostShown);
  std::string quoted(shown);
  std::ranges::replace_if(
      quoted, [](char character) { return static_cast<unsigned char>(character) < ' ' || character == 0x7F; }, ' ');
  return "«" + quoted + (shown.size() < text.size() ? "…»" : "»");
}

/// A server that needs no day answers with the first element alone. A word of failure or a page in its place is no
/// such answer.
bool NeedsNoDay(const std::vector<std::string>& answer) {
  const std::string_view first = answer.front();
  return answer.size() == 1 && first.find('<') == std::string_view::npos &&
         !EqualIgnoringCase(first.substr(0, 5), "error");
}

std::string ShortFirst(const std::vector<std::string>& answer) {
  return answer.empty() ? "nada" : Quoted(answer.front());
}

/// Why the settings could not be saved; empty when they were.
std::string Keep(clsIE_SVentas& exchange, ImpExpSettings& settings) {
  try {
    exchange.WriteBack();
    settings.Save();
  } catch (const ApplicationError& error) {
    return error.what();
  } catch (const HostError& error) {
    return std::string(ResourceText(text_id::cannotSaveSettings)).append(lineBreak).append(TextForPeople(error));
  }
  return {};
}

}  // namespace

clsIE_SVentas::clsIE_SVentas(const ComponentContext& context, clsCallBackProgreso* progress)
    : context_(&context),
      progress_(progress),
      serverAddress_(context.settings.Text(Setting::DireccionServidor)),
      ready_(!serverAddress_.empty()) {
  try {
    referenceDate_ = StoredDate(context.settings, uploadDateSettings, "fecha de referencia");
  } catch (const HostError& error) {
    referenceFailure_ = TextForPeople(error);
  }
}

clsIE_SVentas::~clsIE_SVentas() {
  if (writtenBack_) return;
  try {
    WriteBack();
  } catch (...) {
    return;  // a destructor has nobody to tell; whoever wants to know has called WriteBack
  }
}

void clsIE_SVentas::WriteBack() {
  ImpExpSettings& settings = context_->settings;
  settings.SetText(Setting::DireccionServidor, serverAddress_);
  if (referenceDate_) {
    settings.SetInteger(Setting::OffsetAnno, referenceDate_->Year());
    settings.SetInteger(Setting::OffsetMes, referenceDate_->Month());
    settings.SetInteger(Setting::OffsetDia, referenceDate_->Day());
  }
  writtenBack_ = true;
}

bool clsIE_SVentas::Procesar() {
  result_ = {};
  writtenBack_ = false;
  try {
    Exchange();
    result_.complete = true;
  } catch (const UploadStopped& stopped) {
    result_.failure = stopped.what();
  } catch (const HostError& error) {
    result_.failure = TextForPeople(error);
  }
  if (progress_ != nullptr) progress_->ApagarProgreso();
  return result_.complete && !result_.NothingPending();
}

void clsIE_SVentas::Exchange() {
  if (!ready_) throw UploadStopped("No está configurada la dirección del servidor de ventas.");
  const auto server = ServerAddress::Parse(serverAddress_);
  if (!server) {
    throw UploadStopped("La dirección del servidor de ventas no se entiende: " + Quoted(serverAddress_) +
                        "; se espera servidor o servidor:puerto.");
  }
  if (!referenceDate_) throw UploadStopped(referenceFailure_);
  const std::vector<std::string> answer = AskPendingDays(*server);
  if (answer.empty()) throw UploadStopped("El servidor de ventas respondió sin contenido; no se envió ningún día.");
  if (NeedsNoDay(answer)) return;
  if (answer.size() == 1) {
    throw UploadStopped("El servidor de ventas no pidió ningún día: respondió " + ShortFirst(answer) + ".");
  }
  SendDays(*server, answer);
}

std::vector<std::string> clsIE_SVentas::AskPendingDays(const ServerAddress& server) {
  return Send(server, PendingDaysFields(context_->application.StoreId(), *referenceDate_));
}

void clsIE_SVentas::SendDays(const ServerAddress& server, const std::vector<std::string>& answer) {
  for (std::size_t index = 1; index < answer.size(); ++index) {
    const std::optional<Date> day = ParseListedDay(answer[index]);
    if (!day) {
      throw UploadStopped("El servidor de ventas pidió " + Quoted(answer[index]) + ", que no es un día (AAAAMMDD).");
    }
    if (context_->services.UserInterruption().Requested()) {
      throw HostError(HostErrorKind::Interrupted, "se interrumpió el envío de las ventas");
    }
    if (progress_ != nullptr) {
      progress_->NotificarProgreso(true, static_cast<std::int32_t>(answer.size() - 1),
                                   static_cast<std::int32_t>(index - 1), "Enviando ventas");
    }
    SendDay(server, *day);
    result_.days.push_back(*day);
    referenceDate_ = day;
  }
}

void clsIE_SVentas::SendDay(const ServerAddress& server, Date day) {
  HostApplication& application = context_->application;
  const DaySalesTotals totals = SumDayOperations(application.Database(), day, application.CompanyId());
  const std::vector<std::string> answer =
      Send(server, DayFields(application.StoreId(), day, totals, application.SeparatorText()));
  if (!answer.empty() && answer.front() == accepted) return;
  throw UploadStopped("El servidor de ventas no aceptó el día " + day.ToIsoText() + ": respondió " +
                      ShortFirst(answer) + ".");
}

std::vector<std::string> clsIE_SVentas::Send(const ServerAddress& server, const std::vector<std::string>& fields) {
  HttpRequest request;  // with the time limits that it begins with
  request.host = server.host;
  request.port = server.port;
  request.pathAndQuery = std::string(page) + "?" + EncodeFields(fields);
  const HttpResponse response = context_->application.Http().Get(request);
  if (!response.succeeded) {
    throw UploadStopped("El servidor de ventas " + serverAddress_ + " no respondió: " + response.failure);
  }
  if (response.statusText != answered) {
    throw UploadStopped("El servidor de ventas " + serverAddress_ + " respondió con el estado " + response.statusText +
                        ".");
  }
  return DecodeAnswer(response.body);
}

ActionReport UploadSales(const ComponentContext& context, clsCallBackProgreso* progress) {
  clsIE_SVentas exchange(context, progress);
  ActionReport report{.done = exchange.Procesar()};
  SalesUploadResult result = exchange.Result();
  if (!result.complete) report.text.append(lineBreak).append(result.failure);
  const std::string unsaved = Keep(exchange, context.settings);
  if (!unsaved.empty()) {
    report.text.append(lineBreak).append(unsaved);
    if (result.complete) result.failure = unsaved;
    report.done = result.complete = false;
  }
  if (result.NothingPending()) report.text.append(lineBreak).append(noDayPending);
  report.details = std::move(result);
  return report;
}

}  // namespace tolvan
