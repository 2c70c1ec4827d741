// Loads the module of platform/curl when it is first needed.
#pragma once

#include <memory>

#include "platform/assembly/ModuleLoader.h"
#include "platform/curl/CurlModule.h"

namespace tolvan {

class CurlLoader {
 public:
  /// Throw HostError Configuration when the module cannot be loaded.
  std::unique_ptr<HttpClient> MakeHttpClient(const Interruption& interruption);
  std::unique_ptr<MailService> MakeMailService(const SmtpOptions& options, FileHelper& files,
                                               const Interruption& interruption);

 private:
  ModuleLoader module_{curlModuleFile, "el módulo de correo y red"};
};

}  // namespace tolvan
