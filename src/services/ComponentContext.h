// What clsImpExp takes from its host once and every room reads: a bundle of references, valid as long as the component.
#pragma once

#include "host/HostContext.h"
#include "services/ImpExpSettings.h"

namespace tolvan {

struct ComponentContext {
  AppServices& services;
  HostApplication& application;
  ImpExpSettings& settings;

  Dialogs& UserDialogs() const { return services.UserDialogs(); }
  FileHelper& Files() const { return services.Files(); }
};

}  // namespace tolvan
