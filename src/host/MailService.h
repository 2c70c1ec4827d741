// Sends one file by mail. The host chooses subject and body.
#pragma once

#include <string>
#include <string_view>

namespace tolvan {

enum class MailStatus {
  Sent,
  NotSent,       ///< it cannot be sent as things stand, for example without a recipient and nobody to ask
  Refused,       ///< the server refused the message or the recipient, or stopped answering
  LoginRefused,  ///< user or password not taken
  OutOfMemory,
  AttachmentUnreadable,
  AttachmentFailed,  ///< the file could be opened, but not be read to its end
  CancelledByUser,
  NoService,  ///< there is no mail server to talk to
  Unspecified,
};

struct MailOutcome {
  MailStatus status = MailStatus::Unspecified;
  std::string detail;  ///< what the server or the system said, for people; may be empty
};

class MailService {
 public:
  virtual ~MailService() = default;

  /// Sends the file at `path` to `recipient`, one address, not empty. Waits no longer than its time limits.
  virtual MailOutcome SendFile(std::string_view path, std::string_view recipient) = 0;

  /// The same to a recipient that the user chooses. NotSent where nobody can be asked, CancelledByUser where the user
  /// gives none.
  virtual MailOutcome SendFileToChosenRecipient(std::string_view path) = 0;
};

}  // namespace tolvan
