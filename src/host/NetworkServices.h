// Mail and HTTP: sends one file by mail, whose subject and body the host chooses, and makes one GET request at a time.
#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
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

struct HttpRequest {
  std::string host;  ///< name or address, without scheme or port
  std::uint16_t port = 80;
  std::string pathAndQuery;  ///< without the leading "/"; sent as it stands, nothing is escaped
  std::chrono::milliseconds connectTimeout{10'000};
  std::chrono::milliseconds totalTimeout{30'000};
  std::size_t maximumBody = 4U << 20;  ///< bytes; a longer answer is a failure
};

struct HttpResponse {
  bool succeeded = false;  ///< a complete answer arrived, whatever its status
  std::string statusText;  ///< the status number as text, such as "200"; empty when none arrived
  std::string body;        ///< bytes as they came, transfer encoding removed
  std::string failure;     ///< why it did not succeed, for people; empty when it did
};

/// One GET request at a time.
class HttpClient {
 public:
  virtual ~HttpClient() = default;

  /// Redirections are not followed. Throws HostError Interrupted only; every other failure is in the result.
  virtual HttpResponse Get(const HttpRequest& request) = 0;
};

}  // namespace tolvan
