#include "system/posix/ModuleLoader.h"

#include <dlfcn.h>

#include <filesystem>

#include "host/HostError.h"

namespace tolvan {
namespace {

// Absolute, so that no search path of the environment decides what is loaded.
std::filesystem::path ModulePath(const std::string& file) {
  std::error_code error;
  const std::filesystem::path folder = std::filesystem::read_symlink("/proc/self/exe", error).parent_path();
  const std::filesystem::path beside = folder / file;
  if (std::filesystem::exists(beside, error)) return beside;
  return folder.parent_path() / "lib" / "tolvan-impexp" / file;
}

}  // namespace

void* ModuleLoader::Find(const char* name) {
  if (module_ == nullptr) module_ = ::dlopen(ModulePath(file_).c_str(), RTLD_NOW | RTLD_LOCAL | RTLD_NODELETE);
  if (module_ == nullptr) FailLoading();
  void* entry = ::dlsym(module_, name);
  if (entry == nullptr) FailLoading();
  return entry;
}

void ModuleLoader::FailLoading() const {
  const char* cause = ::dlerror();
  throw HostError(HostErrorKind::Configuration, "no se puede cargar " + purpose_, cause == nullptr ? "" : cause);
}

}  // namespace tolvan
