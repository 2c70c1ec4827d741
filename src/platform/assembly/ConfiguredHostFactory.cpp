#include "platform/assembly/ConfiguredHostFactory.h"

#include <filesystem>

#include "platform/assembly/ConfiguredAppServices.h"
#include "platform/assembly/ConfiguredHostApplication.h"
#include "platform/configuration/HostConfigurationReader.h"
#include "platform/files/PosixPath.h"

namespace tolvan {
namespace {

class ConfiguredHostContext final : public HostContext {
 public:
  ConfiguredHostContext(const HostConfiguration& configuration, const std::string& settingsFile, const HostFront& front,
                        AppServices& services)
      : application_(configuration, settingsFile, front, services) {}

  HostApplication& Application() override { return application_; }

 private:
  ConfiguredHostApplication application_;
};

// A folder that the configuration names, relative to its own.
std::string FolderNamedBy(const HostConfiguration& configuration, const std::string& key, const std::string& value) {
  try {
    return ResolvePath(value, FolderOfConfiguration(configuration));
  } catch (const HostError& error) {
    throw HostError(HostErrorKind::Configuration,
                    configuration.filePath + ": el valor «" + value + "» de «" + key + "» no sirve: " + error.what());
  }
}

std::string ExistingFolder(const HostConfiguration& configuration, const std::string& key, const std::string& value) {
  std::string folder = FolderNamedBy(configuration, key, value);
  if (PosixFileHelper(folder).FolderExists({})) return folder;
  throw HostError(HostErrorKind::Configuration,
                  configuration.filePath + ": la carpeta «" + folder + "» de «" + key + "» no existe");
}

SettingsLocation LocationOf(const HostConfiguration& configuration) {
  if (configuration.settingsFolder.empty()) return LocateSettings(configuration.filePath, {});
  return LocateSettings(configuration.filePath, FolderNamedBy(configuration, "ajustes", configuration.settingsFolder));
}

// What a shop cannot afford to lose to a path chosen by mistake. A database whose path cannot be used is reported when
// it is opened.
std::vector<std::string> FilesToGuard(const HostConfiguration& configuration) {
  std::vector<std::string> files{configuration.filePath};
  const std::string& database = configuration.database.connection;
  if (configuration.database.engine != DatabaseEngine::Sqlite || IsWindowsPath(database)) return files;
  for (const char* part : {"", "-wal", "-shm", "-journal"}) {
    files.push_back(ResolvePath(database, FolderOfConfiguration(configuration)) + part);
  }
  return files;
}

}  // namespace

HostConfiguration OpenHostConfiguration(const std::string& path) {
  std::error_code error;
  const std::string absolute = std::filesystem::absolute(path, error).native();
  if (error || path.empty()) throw HostError(HostErrorKind::Configuration, "la ruta «" + path + "» no sirve");
  PosixFileHelper files("/");
  return ReadHostConfiguration(files, CanonicalPath(absolute));
}

ConfiguredHostFactory::ConfiguredHostFactory(HostConfiguration configuration, const HostFront& front)
    : configuration_(std::move(configuration)),
      front_(front),
      applicationFolder_(ExistingFolder(configuration_, "carpeta", configuration_.applicationFolder)),
      location_(LocationOf(configuration_)) {}

std::unique_ptr<AppServices> ConfiguredHostFactory::CreateAppServices() {
  return std::make_unique<ConfiguredAppServices>(applicationFolder_, FilesToGuard(configuration_),
                                                 configuration_.diagnostic, location_.layoutFile, front_);
}

std::unique_ptr<HostContext> ConfiguredHostFactory::CreateHostContext(AppServices& services) {
  return std::make_unique<ConfiguredHostContext>(configuration_, location_.settingsFile, front_, services);
}

}  // namespace tolvan
