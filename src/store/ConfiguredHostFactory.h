// From a tolvan.ini, and what a front brings along, to the two objects that the component begins with.
#pragma once

#include <string>

#include "host/HostContext.h"
#include "store/ConfiguredHostFactory.h"
#include "store/HostConfiguration.h"
#include "system/posix/PosixPath.h"

namespace tolvan {

/// What a front brings into the host it assembles. Everything outlives the host.
struct HostFront {
  Dialogs& dialogs;
  Clock& clock;
  Interruption& interruption;
  bool userPresent = false;  ///< whether the dialogs reach a person who can answer
};

/// Reads the host configuration at `path`, which may be relative to the current folder. Symbolic links are followed:
/// folders relative to the configuration begin where the file really is. Throws HostError Configuration.
HostConfiguration OpenHostConfiguration(const std::string& path,
                                        std::span<const DatabaseEngine> engines = DatabaseEngines());

class ConfiguredHostFactory final : public HostFactory {
 public:
  /// `configuration` as OpenHostConfiguration gives it. Throws HostError Configuration when a folder that it names
  /// cannot be used.
  ConfiguredHostFactory(HostConfiguration configuration, const HostFront& front);

  std::unique_ptr<AppServices> CreateAppServices() override;
  std::unique_ptr<HostContext> CreateHostContext(AppServices& services) override;

  /// What the user should be told about the configuration, in Spanish; empty when all is well.
  std::string Notice() const;

  const std::string& ApplicationFolder() const { return applicationFolder_; }
  const SettingsLocation& Location() const { return location_; }

 private:
  HostConfiguration configuration_;
  HostFront front_;
  std::string applicationFolder_;
  SettingsLocation location_;
};

}  // namespace tolvan
