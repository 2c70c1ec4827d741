// Loads a module of the program, a library that is only there for what is seldom used, when it is first needed.
#pragma once

#include <string>

namespace tolvan {

class ModuleLoader {
 public:
  /// `file` is the module's file name; `purpose` names it to people ("el módulo de correo y red").
  ModuleLoader(std::string file, std::string purpose) : file_(std::move(file)), purpose_(std::move(purpose)) {}

  /// The function called `name`, to be used as `Function`. Throws HostError Configuration when the module is not beside
  /// the program, nor in lib/tolvan-impexp beside the program's folder, or cannot be loaded. It stays loaded.
  template <class Function>
  Function* EntryPoint(const char* name) {
    return reinterpret_cast<Function*>(Find(name));
  }

 private:
  void* Find(const char* name);
  [[noreturn]] void FailLoading() const;

  std::string file_;
  std::string purpose_;
  void* module_ = nullptr;
};

}  // namespace tolvan
