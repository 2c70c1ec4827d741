#include <curl/curl.h>

#include <memory>
#include <new>

#include "network/CurlServices.h"

namespace {

// Once for the process and never undone: the module stays loaded.
void PrepareLibrary() {
  static const CURLcode code = curl_global_init(CURL_GLOBAL_DEFAULT);
  if (code != CURLE_OK) throw std::bad_alloc();
}

}  // namespace

extern "C" {

[[gnu::visibility("default")]] tolvan::HttpClient* tolvanMakeHttpClient(const tolvan::Interruption& interruption) {
  PrepareLibrary();
  return std::make_unique<tolvan::CurlHttpClient>(interruption).release();
}

[[gnu::visibility("default")]] tolvan::MailService* tolvanMakeMailService(const tolvan::SmtpOptions& options,
                                                                          tolvan::FileHelper& files,
                                                                          const tolvan::Interruption& interruption) {
  PrepareLibrary();
  return std::make_unique<tolvan::CurlMailService>(options, files, interruption).release();
}
}
