// The way from the component to its host. The objects returned by reference live as long as the context.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include "host/AppServices.h"
#include "host/DatabaseServices.h"
#include "host/HttpClient.h"
#include "host/MailService.h"
#include "host/SettingsStore.h"
#include "host/SqlDialect.h"

namespace tolvan {

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

  /// Where the installer of a missing XML library is to be had; empty when not configured.
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
