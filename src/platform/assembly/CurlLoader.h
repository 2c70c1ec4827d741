// Loads the module of platform/curl when it is first needed.
#pragma once

#include <memory>

#include "platform/curl/CurlModule.h"

namespace tolvan {

class CurlLoader {
 public:
  /// Throw HostError Configuration when the module is not beside the program, nor in lib/tolvan-impexp beside the
  /// program's folder, or cannot be loaded. It stays loaded.
  std::unique_ptr<HttpClient> MakeHttpClient(const Interruption& interruption);
  std::unique_ptr<MailService> MakeMailService(const SmtpOptions& options, FileHelper& files,
                                               const Interruption& interruption);

 private:
  void* EntryPoint(const char* name);

  void* module_ = nullptr;
};

}  // namespace tolvan
