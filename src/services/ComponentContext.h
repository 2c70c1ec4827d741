// What every action has of its component: what clsImpExp takes from its host once, and the refusal that the component
// raises itself.
#pragma once

#include <cstdint>
#include <stdexcept>
#include <string>

#include "host/HostContext.h"
#include "services/ImpExpSettings.h"

namespace tolvan {

/// A bundle of references, valid as long as the component.
struct ComponentContext {
  AppServices& services;
  HostApplication& application;
  ImpExpSettings& settings;

  Dialogs& UserDialogs() const { return services.UserDialogs(); }
  FileHelper& Files() const { return services.Files(); }
};

/// A refusal that the component raises itself, numbered as automation does: the object-error base plus an offset.
class ApplicationError : public std::runtime_error {
 public:
  ApplicationError(std::int32_t offset, const std::string& description)
      : std::runtime_error(description), offset_(offset) {}

  /// The automation error code, such as 0x800400FF for the offset 255.
  std::int32_t Code() const noexcept { return objectErrorBase + offset_; }

 private:
  static constexpr std::int32_t objectErrorBase = -2147221504;  // 0x80040000

  std::int32_t offset_;
};

}  // namespace tolvan
