// One GET request at a time.
#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <string>

namespace tolvan {

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

class HttpClient {
 public:
  virtual ~HttpClient() = default;

  /// Redirections are not followed. Throws HostError Interrupted only; every other failure is told by the result.
  virtual HttpResponse Get(const HttpRequest& request) = 0;
};

}  // namespace tolvan
