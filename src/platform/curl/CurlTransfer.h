// One transfer of libcurl: the handle with the options that every transfer of the store has, and its outcome.
//
// Proxies of the environment are not used: the reporting server and the mail server are in the store's own network as
// often as not, and what a scheduler's environment holds must not decide where sales figures go.
#pragma once

#include <curl/curl.h>

#include <array>
#include <chrono>
#include <memory>
#include <string>
#include <string_view>

#include "host/Interruption.h"

namespace tolvan {

struct CurlListDeleter {
  void operator()(curl_slist* list) const { curl_slist_free_all(list); }
};

using CurlList = std::unique_ptr<curl_slist, CurlListDeleter>;

/// Throws std::bad_alloc.
void AppendLine(CurlList& list, const std::string& line);

class CurlTransfer {
 public:
  struct Limits {
    std::chrono::milliseconds connect;
    std::chrono::milliseconds total;
  };

  /// `protocols` are the only ones that the transfer may speak, as CURLOPT_PROTOCOLS_STR takes them. Throws
  /// std::bad_alloc. `interruption` must outlive the transfer.
  CurlTransfer(const char* protocols, const Limits& limits, const Interruption& interruption);

  CurlTransfer(const CurlTransfer&) = delete;
  CurlTransfer& operator=(const CurlTransfer&) = delete;

  CURL* Handle() const { return handle_.get(); }

  /// Throws std::bad_alloc when libcurl does not take the option.
  template <class Value>
  void Set(CURLoption option, Value value) {
    Require(curl_easy_setopt(handle_.get(), option, value));
  }

  CURLcode Perform();

  /// Whether the server took the connection, whatever came after.
  bool WasConnected() const;

  /// The status or reply number that came last, 0 when none did.
  long ResponseCode() const;

  /// Why the transfer failed, in Spanish.
  std::string CauseOf(CURLcode code) const;

 private:
  struct Deleter {
    void operator()(CURL* handle) const { curl_easy_cleanup(handle); }
  };

  static void Require(CURLcode code);

  std::unique_ptr<CURL, Deleter> handle_;
  std::array<char, CURL_ERROR_SIZE> message_{};
};

}  // namespace tolvan
