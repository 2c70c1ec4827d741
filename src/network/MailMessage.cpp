#include "network/MailMessage.h"

#include <curl/curl.h>

#include <algorithm>
#include <ctime>
#include <new>

#include "base/Text.h"
#include "network/MailHeaders.h"

namespace tolvan {
namespace {

void Require(CURLcode code) {
  if (code != CURLE_OK) throw std::bad_alloc();
}

// The store's text files are in this code page; of every other file only its reader knows what it is.
const char* TypeOf(std::string_view fileName) {
  return ToLower(fileName).ends_with(".txt") ? "text/plain; charset=windows-1252" : "application/octet-stream";
}

}  // namespace

void MailMessage::MimeDeleter::operator()(curl_mime* mime) const {
  curl_mime_free(mime);
}

MailMessage::MailMessage(CurlTransfer& transfer, const SmtpOptions& options, const std::string& recipient,
                         InputFile& file, const std::string& fileName)
    : file_(file), left_(file.Size()), mime_(curl_mime_init(transfer.Handle())) {
  if (!mime_) throw std::bad_alloc();
  SetHeaders(transfer, options, recipient, fileName);
  AddText(options, fileName);
  AddFile(fileName);
  transfer.SetPointer(CURLOPT_MIMEPOST, mime_.get());
}

void MailMessage::SetHeaders(CurlTransfer& transfer, const SmtpOptions& options, const std::string& recipient,
                             const std::string& fileName) {
  const std::string subject = options.product + ": " + fileName + ", tienda " + options.storeId;
  AppendLine(headers_, "Date: " + HeaderDate(std::time(nullptr)));
  AppendLine(headers_, "From: " + options.sender);
  AppendLine(headers_, "To: " + recipient);
  AppendLine(headers_, "Subject: " + HeaderText(subject));
  AppendLine(headers_, "Message-ID: " + NewMessageId(options.sender));
  transfer.SetPointer(CURLOPT_HTTPHEADER, headers_.get());
}

void MailMessage::AddText(const SmtpOptions& options, const std::string& fileName) {
  const std::string text = options.product + " envía el archivo adjunto " + fileName + " de la tienda " +
                           options.storeId + ".\r\n\r\nEste mensaje se generó automáticamente.\r\n";
  curl_mimepart* const part = NewPart();
  Require(curl_mime_data(part, text.data(), text.size()));
  Require(curl_mime_type(part, "text/plain; charset=utf-8"));
  Require(curl_mime_encoder(part, "quoted-printable"));
}

void MailMessage::AddFile(const std::string& fileName) {
  CurlList headers;
  AppendLine(headers, "Content-Disposition: " + AttachmentDisposition(fileName));
  curl_mimepart* const part = NewPart();
  Require(curl_mime_data_cb(part, static_cast<curl_off_t>(left_), ReadCallback, nullptr, nullptr, this));
  Require(curl_mime_type(part, TypeOf(fileName)));
  Require(curl_mime_encoder(part, "base64"));
  Require(curl_mime_headers(part, headers.release(), 1));
}

curl_mimepart* MailMessage::NewPart() {
  curl_mimepart* const part = curl_mime_addpart(mime_.get());
  if (part == nullptr) throw std::bad_alloc();
  return part;
}

std::size_t MailMessage::Read(char* buffer, std::size_t size) {
  // No more than was announced: a file that grows meanwhile is sent as it was when it was opened.
  const auto wanted = static_cast<std::size_t>(std::min<std::uint64_t>(left_, size));
  if (wanted == 0) return 0;
  try {
    if (file_.Read({buffer, wanted}) == wanted) {
      left_ -= wanted;
      return wanted;
    }
    readFailure_.emplace(HostErrorKind::Failed, "el archivo terminó antes de lo esperado");
  } catch (const HostError& error) {
    readFailure_ = error;
  }
  return CURL_READFUNC_ABORT;
}

std::size_t MailMessage::ReadCallback(char* buffer, std::size_t size, std::size_t count, void* message) {
  return static_cast<MailMessage*>(message)->Read(buffer, size * count);
}

}  // namespace tolvan
