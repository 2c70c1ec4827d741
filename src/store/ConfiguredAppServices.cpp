#include "store/ConfiguredAppServices.h"

#include "base/Addresses.h"

namespace tolvan {

ConfiguredAppServices::ConfiguredAppServices(const std::string& applicationFolder, FileGuard guard, bool diagnostic,
                                             std::string layoutFile, const HostFront& front)
    : front_(front),
      diagnostic_(diagnostic),
      files_(applicationFolder, std::move(guard)),
      layouts_(ValueFile(front_.clock, std::move(layoutFile), &front_.interruption)) {}

std::int32_t ConfiguredAppServices::ReadLayout(std::string_view section, std::string_view key,
                                               std::int32_t defaultValue) const {
  return layouts_.Read(section, key, defaultValue);
}

void ConfiguredAppServices::WriteLayout(std::string_view section, std::string_view key, std::int32_t value) noexcept {
  layouts_.Write(section, key, value);
}

bool ConfiguredAppServices::IsEmailAddress(std::string_view text) const {
  return tolvan::IsEmailAddress(text);
}

}  // namespace tolvan
