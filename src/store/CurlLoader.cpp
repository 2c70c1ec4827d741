#include "store/CurlLoader.h"

#include <new>

namespace tolvan {

std::unique_ptr<HttpClient> CurlLoader::MakeHttpClient(const Interruption& interruption) {
  auto* const make = module_.EntryPoint<TolvanMakeHttpClient>("tolvanMakeHttpClient");
  std::unique_ptr<HttpClient> client(make(interruption));
  if (!client) throw std::bad_alloc();
  return client;
}

std::unique_ptr<MailService> CurlLoader::MakeMailService(const SmtpOptions& options, FileHelper& files,
                                                         const Interruption& interruption) {
  auto* const make = module_.EntryPoint<TolvanMakeMailService>("tolvanMakeMailService");
  std::unique_ptr<MailService> service(make(options, files, interruption));
  if (!service) throw std::bad_alloc();
  return service;
}

}  // namespace tolvan
