// The message that carries a file: its headers and its parts, in libcurl's form. Whatever the texts hold, no line end
// reaches a header.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "host/FileHelper.h"
#include "network/CurlServices.h"
#include "network/CurlTransfer.h"

struct curl_mime;
struct curl_mimepart;

namespace tolvan {

/// A free text such as a subject: as it stands when it is printable ASCII, else in encoded words (RFC 2047).
std::string HeaderText(std::string_view text);

/// The value of Content-Disposition for a file of that name; a name beyond ASCII by RFC 2231.
std::string AttachmentDisposition(std::string_view fileName);

class MailMessage {
 public:
  /// `file` stands at its beginning and must outlive the message. Throws std::bad_alloc.
  MailMessage(CurlTransfer& transfer, const SmtpOptions& options, const std::string& recipient, InputFile& file,
              const std::string& fileName);

  MailMessage(const MailMessage&) = delete;
  MailMessage& operator=(const MailMessage&) = delete;

  /// Why the file could not be read to its end; nothing while it could.
  const std::optional<HostError>& ReadFailure() const { return readFailure_; }

 private:
  struct MimeDeleter {
    void operator()(curl_mime* mime) const;
  };

  void SetHeaders(CurlTransfer& transfer, const SmtpOptions& options, const std::string& recipient,
                  const std::string& fileName);
  void AddText(const SmtpOptions& options, const std::string& fileName);
  void AddFile(const std::string& fileName);
  curl_mimepart* NewPart();
  std::size_t Read(char* buffer, std::size_t size);
  static std::size_t ReadCallback(char* buffer, std::size_t size, std::size_t count, void* message);

  InputFile& file_;
  std::uint64_t left_;
  std::optional<HostError> readFailure_;
  CurlList headers_;
  std::unique_ptr<curl_mime, MimeDeleter> mime_;
};

}  // namespace tolvan
