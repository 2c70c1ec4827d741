#include "platform/assembly/CurlLoader.h"

#include <dlfcn.h>

#include <filesystem>

#include "host/HostError.h"

namespace tolvan {
namespace {

[[noreturn]] void FailLoading() {
  const char* cause = ::dlerror();
  throw HostError(HostErrorKind::Configuration, "no se puede cargar el módulo de correo y red",
                  cause == nullptr ? "" : cause);
}

// Absolute, so that no search path of the environment decides what is loaded.
std::filesystem::path ModulePath() {
  std::error_code error;
  const std::filesystem::path folder = std::filesystem::read_symlink("/proc/self/exe", error).parent_path();
  const std::filesystem::path beside = folder / curlModuleFile;
  if (std::filesystem::exists(beside, error)) return beside;
  return folder.parent_path() / "lib" / "tolvan-impexp" / curlModuleFile;
}

}  // namespace

void* CurlLoader::EntryPoint(const char* name) {
  if (module_ == nullptr) module_ = ::dlopen(ModulePath().c_str(), RTLD_NOW | RTLD_LOCAL | RTLD_NODELETE);
  if (module_ == nullptr) FailLoading();
  void* entry = ::dlsym(module_, name);
  if (entry == nullptr) FailLoading();
  return entry;
}

std::unique_ptr<HttpClient> CurlLoader::MakeHttpClient(const Interruption& interruption) {
  auto* const make = reinterpret_cast<TolvanMakeHttpClient*>(EntryPoint("tolvanMakeHttpClient"));
  std::unique_ptr<HttpClient> client(make(interruption));
  if (!client) throw std::bad_alloc();
  return client;
}

std::unique_ptr<MailService> CurlLoader::MakeMailService(const SmtpOptions& options, FileHelper& files,
                                                         const Interruption& interruption) {
  auto* const make = reinterpret_cast<TolvanMakeMailService*>(EntryPoint("tolvanMakeMailService"));
  std::unique_ptr<MailService> service(make(options, files, interruption));
  if (!service) throw std::bad_alloc();
  return service;
}

}  // namespace tolvan
