// Mail by SMTP through libcurl: one message with a short Spanish text and the file, byte for byte.
//
// The connection is encrypted for smtps://, and for smtp:// when the server offers it. A certificate is checked for
// smtps:// and wherever a password is sent; a server that offers encryption on its own with a certificate of its own
// making, as a freshly installed one in the store does, gets the message encrypted all the same.
#pragma once

#include "host/FileHelper.h"
#include "host/NetworkServices.h"
#include "host/UserInterface.h"
#include "network/SmtpOptions.h"

namespace tolvan {

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

}  // namespace tolvan
