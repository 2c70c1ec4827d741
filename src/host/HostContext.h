// The way from the component to its host: who the host is, what its user may do, and the services that it offers. The
// objects returned by reference live as long as the object that returns them.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include "host/DatabaseServices.h"
#include "host/FileHelper.h"
#include "host/NetworkServices.h"
#include "host/SqlStatement.h"
#include "host/SystemServices.h"
#include "host/UserInterface.h"

namespace tolvan {

/// What the host offers to every component beside its data: folders, the diagnostic flag, the layout store, small
/// checks, and the services for files, archives, dialogs and time.
class AppServices {
 public:
  virtual ~AppServices() = default;

  /// Absolute, with a separator at the end.
  virtual std::string ApplicationFolder() const = 0;

  /// Whether diagnostic boxes are to be shown.
  virtual bool DiagnosticFlag() const = 0;

  /// The layout store: whole numbers that say where windows were left, kept across runs for the whole machine. A value
  /// that is missing or unreadable is the default.
  virtual std::int32_t ReadLayout(std::string_view section, std::string_view key, std::int32_t defaultValue) const = 0;

  /// A failure to keep the value is not reported.
  virtual void WriteLayout(std::string_view section, std::string_view key, std::int32_t value) noexcept = 0;

  /// One plausible mail address: a local part, "@", a domain of labels; no blanks, at most 254 characters.
  virtual bool IsEmailAddress(std::string_view text) const = 0;

  virtual FileHelper& Files() = 0;
  virtual ArchiveReader& Archives() = 0;
  virtual Dialogs& UserDialogs() = 0;
  virtual Clock& SystemClock() = 0;
  virtual Interruption& UserInterruption() = 0;
};

/// The application object: who the host is, what its user may do, and its services.
class HostApplication {
 public:
  virtual ~HostApplication() = default;

  virtual std::string ProductName() const = 0;  ///< replaces "%1" in texts and titles message boxes
  virtual std::int32_t CompanyId() const = 0;
  virtual std::int32_t SiteId() const = 0;
  virtual std::string StoreId() const = 0;
  virtual std::int32_t InventoryFlag() const = 0;  ///< the inventory that item queries look at
  virtual std::string MoneyFormat() const = 0;     ///< a display pattern such as "#,##0.00"
  virtual std::string SeparatorText() const = 0;   ///< the grouping separator
  virtual std::string DefaultEmailRecipient() const = 0;
  virtual bool HasPermission(std::string_view name) const = 0;

  /// The host and the two captured form values of the taxpayer lookup page; empty when not configured.
  virtual std::string TaxpayerLookupHost() const = 0;
  virtual std::string TaxpayerLookupViewState() const = 0;
  virtual std::string TaxpayerLookupEventValidation() const = 0;

  /// Where the installer of a missing XML library can be downloaded; empty when not configured.
  virtual std::string XmlLibraryDownload() const = 0;

  /// Opens the database at the first call. Throws HostError Unreachable, Busy, Damaged or Access.
  virtual DatabaseServices& Database() = 0;
  virtual const SqlDialect& Dialect() const = 0;
  virtual SettingsStore& Settings() = 0;
  virtual MailService& Mail() = 0;
  virtual HttpClient& Http() = 0;
};

class HostContext {
 public:
  virtual ~HostContext() = default;
  virtual HostApplication& Application() = 0;
};

/// What a front hands to the component so that it can make the two objects it begins with.
class HostFactory {
 public:
  virtual ~HostFactory() = default;

  /// Created first; outlives the context made after it.
  virtual std::unique_ptr<AppServices> CreateAppServices() = 0;
  virtual std::unique_ptr<HostContext> CreateHostContext(AppServices& services) = 0;
};

}  // namespace tolvan
