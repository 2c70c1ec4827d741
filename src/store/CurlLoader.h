// Loads the module of network/ when it is first needed.
#pragma once

#include <memory>

#include "network/CurlServices.h"
#include "system/posix/PosixServices.h"

namespace tolvan {

class CurlLoader {
 public:
  /// Throw HostError Configuration when the module cannot be loaded.
  std::unique_ptr<HttpClient> MakeHttpClient(const Interruption& interruption);
  std::unique_ptr<MailService> MakeMailService(const SmtpOptions& options, FileHelper& files,
                                               const Interruption& interruption);

 private:
  ModuleLoader module_{networkModuleFile, "el módulo de correo y red"};
};

}  // namespace tolvan
