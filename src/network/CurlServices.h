// HTTP and mail by libcurl, and the module that holds them.
#pragma once

#include <chrono>
#include <string>

#include "host/FileHelper.h"
#include "host/NetworkServices.h"
#include "host/UserInterface.h"

namespace tolvan {

/// GET requests. The request line is given to libcurl as it stands, so nothing in it is escaped or shortened; only what
/// would end the line (a control character) is refused.
class CurlHttpClient final : public HttpClient {
 public:
  explicit CurlHttpClient(const Interruption& interruption) : interruption_(interruption) {}

  HttpResponse Get(const HttpRequest& request) override;

 private:
  const Interruption& interruption_;
};

/// How mail leaves the store. Texts are UTF-8.
struct SmtpOptions {
  std::string server;  ///< smtp:// or smtps:// with host and port; empty: there is no mail server
  std::string user;    ///< empty: no login
  std::string password;
  std::string sender;   ///< an address
  std::string product;  ///< named in subject and body, as is the store
  std::string storeId;
  std::chrono::milliseconds connectTimeout{10'000};
  std::chrono::milliseconds answerTimeout{30'000};  ///< the longest wait for any one reply of the server
  std::chrono::milliseconds totalTimeout{120'000};
};

/// Mail by SMTP: one message with a short Spanish text and the file, byte for byte.
///
/// The connection is encrypted for smtps://, and for smtp:// when the server offers it. A certificate is checked for
/// smtps:// and wherever a password is sent; a server that offers encryption by itself under a self-signed certificate,
/// as a freshly installed one in the store does, still gets the message encrypted.
class CurlMailService final : public MailService {
 public:
  /// The references must outlive the object.
  CurlMailService(SmtpOptions options, FileHelper& files, const Interruption& interruption)
      : options_(std::move(options)), files_(files), interruption_(interruption) {}

  MailOutcome SendFile(std::string_view path, std::string_view recipient) override;

  /// Nobody can be asked here: NotSent.
  MailOutcome SendFileToChosenRecipient(std::string_view path) override;

 private:
  MailOutcome Send(InputFile& file, const std::string& fileName, const std::string& recipient);

  SmtpOptions options_;
  FileHelper& files_;
  const Interruption& interruption_;
};

/// The module: a library of its own, loaded when mail or HTTP is first used, because linking libcurl costs every start
/// of a program several times what a short command itself takes.
inline constexpr const char* networkModuleFile = "libtolvan_network.so";

}  // namespace tolvan

// The module's entry points.
extern "C" {

/// The caller owns the result, which is never null, and deletes it. References must outlive it.
using TolvanMakeHttpClient = tolvan::HttpClient*(const tolvan::Interruption& interruption);
using TolvanMakeMailService = tolvan::MailService*(const tolvan::SmtpOptions& options, tolvan::FileHelper& files,
                                                   const tolvan::Interruption& interruption);

TolvanMakeHttpClient tolvanMakeHttpClient;
TolvanMakeMailService tolvanMakeMailService;
}
