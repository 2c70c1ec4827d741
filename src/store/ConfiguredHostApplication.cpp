#include "store/ConfiguredHostApplication.h"

#include <algorithm>

namespace tolvan {
namespace {

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

}  // namespace

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

}  // namespace tolvan
