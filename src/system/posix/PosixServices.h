// What a program asks of the operating system besides files: the time, a hash, modules that are loaded late, and the
// desktop's program for a file.
#pragma once

#include <string>

#include "host/SystemServices.h"

namespace tolvan {

/// The computer's clock in its own time zone.
class SystemClock final : public Clock {
 public:
  DateTime Now() const override;
};

/// By Nettle, because it is a plain library of algorithms: nothing is initialised when the process starts.
class NettleHashService final : public HashService {
 public:
  std::string Md5(std::string_view bytes) const override;
};

/// Loads a module of the program, a library that is only there for what is seldom used, when it is first needed.
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

/// Shows a file in the program that the user's desktop has for it, and does not wait for that program. Throws HostError
/// Unreachable, with the path as its context, when there is no desktop or it has no such program.
void OpenWithDesktop(const std::string& path);

}  // namespace tolvan
