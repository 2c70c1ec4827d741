#include "network/CurlServices.h"

#include <curl/curl.h>

#include <algorithm>
#include <chrono>
#include <exception>
#include <new>
#include <string>
#include <string_view>

#include "base/Addresses.h"
#include "base/Text.h"
#include "network/CurlTransfer.h"
#include "network/MailMessage.h"

namespace tolvan {
namespace {

constexpr std::size_t numberLength = 3;
constexpr std::size_t mostCharacters = 500;

std::string ForPeople(std::string_view line) {
  std::string text = IsValidUtf8(line) ? std::string(line) : FromWindows1252(line);
  std::erase_if(text, [](char character) { return static_cast<unsigned char>(character) < 0x20; });
  return text;
}

/// What a mail server answers in the course of one delivery, line by line.
class SmtpReplies {
 public:
  void Add(std::string_view line);

  /// The last reply that refused something (a number from 400 up), its lines joined, for people: valid UTF-8 without
  /// controls. Empty when there was none.
  const std::string& Refusal() const { return refusal_; }

 private:
  std::string current_;
  bool complete_ = true;
  std::string refusal_;
};

void SmtpReplies::Add(std::string_view line) {
  const std::string text = ForPeople(line);
  if (complete_) {
    current_ = text;
  } else if (current_.size() < mostCharacters) {
    // The number stands before every line of a reply; once is enough.
    current_.append(" ").append(text.substr(std::min(numberLength + 1, text.size())));
  }
  complete_ = text.size() <= numberLength || text[numberLength] != '-';
  const bool refuses = current_.starts_with('4') || current_.starts_with('5');
  if (complete_ && refuses) refusal_ = FirstCharacters(current_, mostCharacters);
}

std::string NameOf(std::string_view path) {
  return std::string(path.substr(path.find_last_of('/') + 1));
}

std::size_t TakeReply(char* bytes, std::size_t size, std::size_t count, void* replies) {
  try {
    static_cast<SmtpReplies*>(replies)->Add({bytes, size * count});
  } catch (const std::exception&) {
    return 0;  // No exception may pass through the C library; a short count makes it give up.
  }
  return size * count;
}

void SetServer(CurlTransfer& transfer, const SmtpOptions& options) {
  const bool alwaysEncrypted = options.server.starts_with("smtps:");
  const bool checksCertificate = alwaysEncrypted || !options.user.empty();
  transfer.SetText(CURLOPT_URL, options.server);
  transfer.SetNumber(CURLOPT_USE_SSL, alwaysEncrypted ? CURLUSESSL_ALL : CURLUSESSL_TRY);
  transfer.SetNumber(CURLOPT_SSL_VERIFYPEER, checksCertificate ? 1 : 0);
  transfer.SetNumber(CURLOPT_SSL_VERIFYHOST, checksCertificate ? 2 : 0);
  const auto answerSeconds = std::chrono::ceil<std::chrono::seconds>(options.answerTimeout);
  transfer.SetNumber(CURLOPT_SERVER_RESPONSE_TIMEOUT, static_cast<long>(answerSeconds.count()));
  if (options.user.empty()) return;
  transfer.SetText(CURLOPT_USERNAME, options.user);
  transfer.SetText(CURLOPT_PASSWORD, options.password);
}

MailStatus StatusOf(const CurlTransfer& transfer, const SmtpReplies& replies, int code) {
  switch (code) {
    case CURLE_OK:
      return MailStatus::Sent;
    case CURLE_LOGIN_DENIED:
      return MailStatus::LoginRefused;
    case CURLE_OUT_OF_MEMORY:
      return MailStatus::OutOfMemory;
    case CURLE_ABORTED_BY_CALLBACK:
      return MailStatus::CancelledByUser;
    case CURLE_COULDNT_RESOLVE_HOST:
    case CURLE_COULDNT_CONNECT:
    case CURLE_URL_MALFORMAT:
    case CURLE_UNSUPPORTED_PROTOCOL:
      return MailStatus::NoService;
    default:
      break;
  }
  if (transfer.WasConnected() || !replies.Refusal().empty()) return MailStatus::Refused;
  return code == CURLE_OPERATION_TIMEDOUT ? MailStatus::NoService : MailStatus::Unspecified;
}

std::string DetailOf(const SmtpReplies& replies, int code) {
  if (code == CURLE_OK) return {};
  if (code == CURLE_ABORTED_BY_CALLBACK) return "Se interrumpió el envío.";
  if (!replies.Refusal().empty()) return "El servidor de correo respondió: " + replies.Refusal();
  return "Servidor de correo: " + CurlTransfer::CauseOf(code);
}

}  // namespace

MailOutcome CurlMailService::SendFile(std::string_view path, std::string_view recipient) {
  if (options_.server.empty()) return {MailStatus::NoService, "No hay servidor de correo en la configuración."};
  // Also what keeps line ends and brackets out of the dialogue and the headers.
  if (!IsEmailAddress(recipient) || !IsEmailAddress(options_.sender)) {
    return {MailStatus::NotSent, "El destinatario o el remitente no es una dirección de correo."};
  }
  std::unique_ptr<InputFile> file;
  try {
    file = files_.OpenInput(path);
  } catch (const HostError& error) {
    return {MailStatus::AttachmentUnreadable, TextForPeople(error)};
  }
  try {
    return Send(*file, NameOf(path), std::string(recipient));
  } catch (const std::bad_alloc&) {
    return {MailStatus::OutOfMemory, {}};
  }
}

MailOutcome CurlMailService::Send(InputFile& file, const std::string& fileName, const std::string& recipient) {
  SmtpReplies replies;
  CurlList recipients;
  AppendLine(recipients, "<" + recipient + ">");
  const std::string sender = "<" + options_.sender + ">";
  CurlTransfer transfer("smtp,smtps", {options_.connectTimeout, options_.totalTimeout}, interruption_,
                        "El servidor de correo no ha respondido todavía; esperando…");
  SetServer(transfer, options_);
  transfer.SetText(CURLOPT_MAIL_FROM, sender);
  transfer.SetPointer(CURLOPT_MAIL_RCPT, recipients.get());
  transfer.SetCallback(CURLOPT_HEADERFUNCTION, TakeReply);
  transfer.SetPointer(CURLOPT_HEADERDATA, &replies);
  transfer.SetNumber(CURLOPT_UPLOAD, 1);
  const MailMessage message(transfer, options_, recipient, file, fileName);
  const int code = transfer.Perform();
  if (message.ReadFailure()) return {MailStatus::AttachmentFailed, TextForPeople(*message.ReadFailure())};
  return {StatusOf(transfer, replies, code), DetailOf(replies, code)};
}

MailOutcome CurlMailService::SendFileToChosenRecipient(std::string_view /*path*/) {
  return {MailStatus::NotSent, "No hay un destinatario configurado ni a quién preguntarlo."};
}

}  // namespace tolvan
