#include "store/ConfiguredHostFactory.h"

#include <algorithm>
#include <cctype>
#include <filesystem>

#include "base/Addresses.h"
#include "base/Text.h"
#include "store/DeferredProviders.h"
#include "system/SettingsAndLayouts.h"
#include "system/posix/PosixFileHelper.h"
#include "system/posix/PosixPath.h"

namespace tolvan {
namespace {

/// The services of a host that is described by its configuration file.
class ConfiguredAppServices final : public AppServices {
 public:
  /// `applicationFolder` and `layoutFile` are absolute.
  ConfiguredAppServices(const std::string& applicationFolder, FileGuard guard, bool diagnostic, std::string layoutFile,
                        const HostFront& front)
      : front_(front),
        diagnostic_(diagnostic),
        files_(applicationFolder, std::move(guard)),
        layouts_(ValueFile(front_.clock, std::move(layoutFile), &front_.interruption)) {}

  std::string ApplicationFolder() const override { return files_.NormalizeFolder({}); }
  bool DiagnosticFlag() const override { return diagnostic_; }
  std::int32_t ReadLayout(std::string_view section, std::string_view key, std::int32_t defaultValue) const override {
    return layouts_.Read(section, key, defaultValue);
  }
  void WriteLayout(std::string_view section, std::string_view key, std::int32_t value) noexcept override {
    layouts_.Write(section, key, value);
  }
  bool IsEmailAddress(std::string_view text) const override { return tolvan::IsEmailAddress(text); }
  FileHelper& Files() override { return files_; }
  ArchiveReader& Archives() override { return archives_; }
  Dialogs& UserDialogs() override { return front_.dialogs; }
  Clock& SystemClock() override { return front_.clock; }
  Interruption& UserInterruption() override { return front_.interruption; }

 private:
  HostFront front_;
  bool diagnostic_;
  PosixFileHelper files_;
  DeferredArchiveReader archives_;
  mutable LayoutStore layouts_;  // reading may put a damaged file aside
};

SmtpOptions MailOptionsOf(const HostConfiguration& configuration) {
  const MailConfiguration& mail = configuration.mail;
  SmtpOptions options;
  options.server = mail.server;
  options.user = mail.user;
  options.password = mail.password;
  options.sender = mail.sender;
  options.product = configuration.product;
  options.storeId = configuration.storeId;
  return options;
}

/// The application object of a host that is described by its configuration file. Database, mail and HTTP come into
/// being when they are first used.
class ConfiguredHostApplication final : public HostApplication {
 public:
  /// `settingsFile` is absolute. `services` and what `front` refers to must outlive the object.
  ConfiguredHostApplication(HostConfiguration configuration, std::string settingsFile, const HostFront& front,
                            AppServices& services);

  std::string ProductName() const override { return configuration_.product; }
  std::int32_t CompanyId() const override { return configuration_.companyId; }
  std::int32_t SiteId() const override { return configuration_.siteId; }
  std::string StoreId() const override { return configuration_.storeId; }
  std::int32_t InventoryFlag() const override { return configuration_.inventoryFlag; }
  std::string MoneyFormat() const override { return configuration_.moneyFormat; }
  std::string SeparatorText() const override { return configuration_.separator; }
  std::string DefaultEmailRecipient() const override { return configuration_.mail.defaultRecipient; }
  bool HasPermission(std::string_view name) const override;
  std::string TaxpayerLookupHost() const override { return configuration_.lookup.host; }
  std::string TaxpayerLookupViewState() const override { return configuration_.lookup.viewState; }
  std::string TaxpayerLookupEventValidation() const override { return configuration_.lookup.eventValidation; }
  std::string XmlLibraryDownload() const override { return configuration_.xmlDownload; }

  DatabaseServices& Database() override;
  const SqlDialect& Dialect() const override { return *dialect_; }
  SettingsStore& Settings() override { return settings_; }
  MailService& Mail() override { return mail_; }
  HttpClient& Http() override { return http_; }

 private:
  HostConfiguration configuration_;
  const Interruption& interruption_;
  std::unique_ptr<SqlDialect> dialect_;
  std::unique_ptr<DatabaseServices> database_;
  TextSettingsStore settings_;
  DeferredMailService mail_;
  DeferredHttpClient http_;
};

ConfiguredHostApplication::ConfiguredHostApplication(HostConfiguration configuration, std::string settingsFile,
                                                     const HostFront& front, AppServices& services)
    : configuration_(std::move(configuration)),
      interruption_(front.interruption),
      dialect_(configuration_.database.engine->makeDialect()),
      settings_(ValueFile(front.clock, std::move(settingsFile), &front.interruption)),
      mail_(MailOptionsOf(configuration_), services.Files(), front.interruption,
            front.userPresent ? &front.dialogs : nullptr),
      http_(front.interruption) {}

bool ConfiguredHostApplication::HasPermission(std::string_view name) const {
  const auto& names = configuration_.permissions;
  return std::find(names.begin(), names.end(), name) != names.end();
}

DatabaseServices& ConfiguredHostApplication::Database() {
  if (!database_) database_ = configuration_.database.engine->open(configuration_, *dialect_, interruption_);
  return *database_;
}

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

// The engine keeps its own files beside the one that a link leads to.
void GuardDatabase(FileGuard& guard, const std::string& path) {
  for (const std::string& database : {path, CanonicalPath(path)}) {
    for (const char* part : {"", "-wal", "-shm", "-journal"}) guard.AddFile(database + part);
  }
}

FileGuard GuardOf(const HostConfiguration& configuration, const SettingsLocation& location) {
  FileGuard guard;
  guard.AddFile(configuration.filePath);
  // Locks and damaged files that were put aside stand beside the settings, and so do those of other configurations.
  guard.AddFilesNamed(".ajustes", FolderOf(location.settingsFile));
  guard.AddFilesNamed(".ventanas", FolderOf(location.layoutFile));
  if (!configuration.database.engine->Traits().isFile) return guard;
  try {
    GuardDatabase(guard, ResolvePath(configuration.database.connection, FolderOfConfiguration(configuration)));
  } catch (const HostError&) {
    // A path that cannot be used leads to no database, which is reported when it is opened.
  }
  return guard;
}

// A path as one word of a shell's command.
std::string ShellWord(const std::string& path) {
  const bool isPlain = std::ranges::all_of(path, [](char character) {
    return std::isalnum(static_cast<unsigned char>(character)) != 0 ||
           std::string_view("/._-").find(character) != std::string_view::npos;
  });
  if (isPlain) return path;
  return "'" + ReplaceAll(path, "'", "'\\''") + "'";
}

}  // namespace

HostConfiguration OpenHostConfiguration(const std::string& path, std::span<const DatabaseEngine> engines) {
  std::error_code error;
  const std::string absolute = std::filesystem::absolute(path, error).native();
  if (error || path.empty()) throw HostError(HostErrorKind::Configuration, "la ruta «" + path + "» no sirve");
  PosixFileHelper files("/");
  return ReadHostConfiguration(files, CanonicalPath(absolute), engines);
}

ConfiguredHostFactory::ConfiguredHostFactory(HostConfiguration configuration, const HostFront& front)
    : configuration_(std::move(configuration)),
      front_(front),
      applicationFolder_(ExistingFolder(configuration_, "carpeta", configuration_.applicationFolder)),
      location_(LocationOf(configuration_)) {}

std::string ConfiguredHostFactory::Notice() const {
  const std::string& path = configuration_.filePath;
  if (!HasPassword(configuration_) || !IsReadableByEverybody(path)) return {};
  return "Cualquier usuario de este equipo puede leer la contraseña que está en " + path +
         ". Para evitarlo:\r\n  chmod 600 " + ShellWord(path);
}

std::unique_ptr<AppServices> ConfiguredHostFactory::CreateAppServices() {
  return std::make_unique<ConfiguredAppServices>(applicationFolder_, GuardOf(configuration_, location_),
                                                 configuration_.diagnostic, location_.layoutFile, front_);
}

std::unique_ptr<HostContext> ConfiguredHostFactory::CreateHostContext(AppServices& services) {
  return std::make_unique<ConfiguredHostContext>(configuration_, location_.settingsFile, front_, services);
}

}  // namespace tolvan
