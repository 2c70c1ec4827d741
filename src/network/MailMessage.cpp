#include "network/MailMessage.h"

#include <curl/curl.h>

#include <algorithm>
#include <array>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <new>
#include <random>

#include "base/Text.h"
#include "network/CurlTransfer.h"

namespace tolvan {
namespace {

bool IsPrintableAscii(std::string_view text) {
  return std::all_of(text.begin(), text.end(), [](char character) { return character >= ' ' && character <= '~'; });
}

std::string Base64(std::string_view bytes) {
  constexpr std::string_view digits = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
  std::string text;
  for (std::size_t begin = 0; begin < bytes.size(); begin += 3) {
    const std::string_view group = bytes.substr(begin, 3);
    unsigned bits = 0;
    for (std::size_t index = 0; index < 3; ++index) {
      bits = bits << 8U | (index < group.size() ? static_cast<unsigned char>(group[index]) : 0U);
    }
    for (std::size_t index = 0; index < 4; ++index) {
      text += index <= group.size() ? digits[bits >> (18U - 6U * index) & 63U] : '=';
    }
  }
  return text;
}

template <class... Values>
std::string Formatted(const char* format, Values... values) {
  std::array<char, 64> buffer{};
  std::snprintf(buffer.data(), buffer.size(), format, values...);
  return buffer.data();
}

/// "Fri, 31 Jan 2025 19:00:00 -0400", in the computer's time zone (RFC 5322).
std::string HeaderDate(std::time_t moment) {
  // Not by strftime, whose names follow the program's language.
  constexpr std::array days{"Sun", "Mon", "Tue", "Wed", "Thu", "Fri", "Sat"};
  constexpr std::array months{"Jan", "Feb", "Mar", "Apr", "May", "Jun", "Jul", "Aug", "Sep", "Oct", "Nov", "Dec"};
  std::tm local{};
  ::localtime_r(&moment, &local);
  const long minutes = std::labs(local.tm_gmtoff) / 60;
  return Formatted("%s, %02d %s %04d %02d:%02d:%02d %c%02ld%02ld", days.at(static_cast<std::size_t>(local.tm_wday)),
                   local.tm_mday, months.at(static_cast<std::size_t>(local.tm_mon)), local.tm_year + 1900,
                   local.tm_hour, local.tm_min, local.tm_sec, local.tm_gmtoff < 0 ? '-' : '+', minutes / 60,
                   minutes % 60);
}

/// A new identifier "<…@domain>", the domain that of the address.
std::string NewMessageId(std::string_view sender) {
  std::random_device random;
  std::string identifier = "<";
  for (int part = 0; part < 4; ++part) identifier += Formatted("%08x", random());
  return identifier.append(sender.substr(sender.find('@'))).append(">");
}

// The store's text files are in this code page; of every other file only its reader knows what it is.
const char* TypeOf(std::string_view fileName) {
  return ToLower(fileName).ends_with(".txt") ? "text/plain; charset=windows-1252" : "application/octet-stream";
}

}  // namespace

std::string HeaderText(std::string_view text) {
  if (IsPrintableAscii(text)) return std::string(text);
  constexpr std::size_t mostBytes = 42;  // their base64 with the frame stays under 75 characters
  std::string words;
  while (!text.empty()) {
    std::size_t end = 0;
    for (std::size_t next = 0; next < text.size(); end = next) {
      NextCodePoint(text, next);
      if (next > mostBytes) break;
    }
    words.append(words.empty() ? "" : "\r\n ").append("=?UTF-8?B?" + Base64(text.substr(0, end)) + "?=");
    text.remove_prefix(end);
  }
  return words;
}

std::string AttachmentDisposition(std::string_view fileName) {
  if (IsPrintableAscii(fileName)) {
    const std::string escaped = ReplaceAll(ReplaceAll(fileName, "\\", "\\\\"), "\"", "\\\"");
    return "attachment; filename=\"" + escaped + "\"";
  }
  std::string encoded;
  for (const char character : fileName) {
    const bool isLetterOrDigit = (character >= 'a' && character <= 'z') || (character >= 'A' && character <= 'Z') ||
                                 (character >= '0' && character <= '9');
    if (isLetterOrDigit || character == '.' || character == '-' || character == '_') {
      encoded += character;
    } else {
      encoded += Formatted("%%%02X", static_cast<unsigned>(static_cast<unsigned char>(character)));
    }
  }
  return "attachment; filename*=UTF-8''" + encoded;
}

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
  RequireSet(curl_mime_data(part, text.data(), text.size()));
  RequireSet(curl_mime_type(part, "text/plain; charset=utf-8"));
  RequireSet(curl_mime_encoder(part, "quoted-printable"));
}

void MailMessage::AddFile(const std::string& fileName) {
  CurlList headers;
  AppendLine(headers, "Content-Disposition: " + AttachmentDisposition(fileName));
  curl_mimepart* const part = NewPart();
  RequireSet(curl_mime_data_cb(part, static_cast<curl_off_t>(left_), ReadCallback, nullptr, nullptr, this));
  RequireSet(curl_mime_type(part, TypeOf(fileName)));
  RequireSet(curl_mime_encoder(part, "base64"));
  RequireSet(curl_mime_headers(part, headers.release(), 1));
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
