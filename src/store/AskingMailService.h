// The host's mail service: asks for the recipient where none is given, and loads the curl module for the sending.
#pragma once

#include <memory>

#include "host/FileHelper.h"
#include "host/NetworkServices.h"
#include "host/UserInterface.h"
#include "store/CurlLoader.h"

namespace tolvan {

class AskingMailService final : public MailService {
 public:
  /// `dialogs` is null where there is no user to ask. The references must outlive the object.
  AskingMailService(CurlLoader& loader, SmtpOptions options, FileHelper& files, const Interruption& interruption,
                    Dialogs* dialogs)
      : loader_(loader), options_(std::move(options)), files_(files), interruption_(interruption), dialogs_(dialogs) {}

  MailOutcome SendFile(std::string_view path, std::string_view recipient) override;

  /// Asks again while the text is no mail address.
  MailOutcome SendFileToChosenRecipient(std::string_view path) override;

 private:
  CurlLoader& loader_;
  SmtpOptions options_;
  FileHelper& files_;
  const Interruption& interruption_;
  Dialogs* dialogs_;
  std::unique_ptr<MailService> sender_;
};

}  // namespace tolvan
