// The host behind one call of the command: the configuration read, the component attached to it, its settings loaded.
#pragma once

#include <memory>
#include <string>

#include "component/clsImpExp.h"
#include "store/HostFront.h"

namespace tolvan {

class ConfiguredHostFactory;

class CommandHost {
 public:
  /// Reads the configuration at `path` and makes the component. Throws CommandFailure Unreachable.
  CommandHost(const std::string& path, const HostFront& front);
  ~CommandHost();
  CommandHost(const CommandHost&) = delete;
  CommandHost& operator=(const CommandHost&) = delete;

  clsImpExp& Component() { return *component_; }
  const ComponentContext& Context() const { return component_->Context(); }

  /// Opens the database now, so that one that cannot be reached ends the call before anything else is done. Throws
  /// CommandFailure Unreachable.
  DatabaseServices& RequireDatabase() const;

  /// What the user should be told about the configuration and the settings; empty when all was well.
  std::string Notice() const;

 private:
  std::unique_ptr<ConfiguredHostFactory> factory_;
  std::unique_ptr<clsImpExp> component_;
};

}  // namespace tolvan
