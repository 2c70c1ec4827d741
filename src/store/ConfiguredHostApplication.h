#pragma once

#include <memory>

#include "host/HostContext.h"
#include "store/ConfiguredHostFactory.h"
#include "store/DeferredProviders.h"
#include "store/HostConfiguration.h"
#include "system/SettingsAndLayouts.h"

namespace tolvan {

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

}  // namespace tolvan
