// One transfer of libcurl: the handle with the options that every transfer of the store has, and its outcome. Options
// and result codes are libcurl's own numbers; its header is included by the .cpp files only.
//
// Proxies of the environment are not used: the reporting server and the mail server are in the store's own network as
// often as not, and what a scheduler's environment holds must not decide where sales figures go.
#pragma once

#include <array>
#include <chrono>
#include <cstddef>
#include <memory>
#include <string>

#include "host/UserInterface.h"

struct curl_slist;

namespace tolvan {

/// Throws std::bad_alloc unless `code` is CURLE_OK. For calls that only set or add a part, which fail for want of
/// memory.
void RequireSet(int code);

struct CurlListDeleter {
  void operator()(curl_slist* list) const;
};

using CurlList = std::unique_ptr<curl_slist, CurlListDeleter>;

/// Throws std::bad_alloc.
void AppendLine(CurlList& list, const std::string& line);

/// Takes or gives bytes: the buffer, size and count whose product is its length, and the pointer that was set with the
/// callback. Must let no exception pass.
using CurlCallback = std::size_t (*)(char*, std::size_t, std::size_t, void*);

class CurlTransfer {
 public:
  struct Limits {
    std::chrono::milliseconds connect;
    std::chrono::milliseconds total;
  };

  /// `protocols` are the only ones that the transfer may speak, separated by commas. Throws std::bad_alloc.
  /// `interruption` must outlive the transfer. `whoIsWaitedFor` is shown when the transfer lasts: see Waiting.
  CurlTransfer(const char* protocols, const Limits& limits, const Interruption& interruption,
               std::string whoIsWaitedFor);

  CurlTransfer(const CurlTransfer&) = delete;
  CurlTransfer& operator=(const CurlTransfer&) = delete;

  void* Handle() const { return handle_.get(); }

  /// Throw std::bad_alloc when libcurl does not take the option. Texts are copied; what a pointer leads to is not.
  void SetNumber(int option, long value);
  void SetText(int option, const std::string& value);
  void SetPointer(int option, void* value);
  void SetCallback(int option, CurlCallback callback);

  /// libcurl's result code; CURLE_ABORTED_BY_CALLBACK when the user ended it.
  int Perform();

  /// Whether the server took the connection, whatever came after.
  bool WasConnected() const;

  /// The status or reply number that came last, 0 when none did.
  long ResponseCode() const;

  /// Why a transfer failed with `code`, in Spanish, followed by the code.
  static std::string CauseOf(int code);

 private:
  struct Deleter {
    void operator()(void* handle) const;
  };

  int PerformIn(void* transfers);

  std::unique_ptr<void, Deleter> handle_;
  const Interruption& interruption_;
  std::string whoIsWaitedFor_;
};

}  // namespace tolvan
