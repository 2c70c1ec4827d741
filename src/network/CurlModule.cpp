#include <curl/curl.h>

#include <new>

#include "network/CurlServices.h"

namespace {

// Once for the process and never undone: the module stays loaded.
bool LibraryIsReady() {
  static const CURLcode code = curl_global_init(CURL_GLOBAL_DEFAULT);
  return code == CURLE_OK;
}

}  // namespace

extern "C" {

[[gnu::visibility("default")]] tolvan::HttpClient* tolvanMakeHttpClient(const tolvan::Interruption& interruption) {
  if (!LibraryIsReady()) return nullptr;
  return new (std::nothrow) tolvan::CurlHttpClient(interruption);
}

[[gnu::visibility("default")]] tolvan::MailService* tolvanMakeMailService(const tolvan::SmtpOptions& options,
                                                                          tolvan::FileHelper& files,
                                                                          const tolvan::Interruption& interruption) {
  if (!LibraryIsReady()) return nullptr;
  return new (std::nothrow) tolvan::CurlMailService(options, files, interruption);
}
}
