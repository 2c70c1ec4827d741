#include "system/LayoutRegistry.h"

#include <exception>

#include "base/Text.h"

namespace tolvan {

std::int32_t LayoutRegistry::Read(std::string_view section, std::string_view key, std::int32_t defaultValue) noexcept {
  try {
    const NamedValues values = file_.Read().values;
    const auto found = values.find(ValueName(section, key));
    if (found == values.end()) return defaultValue;
    return ParseInteger(found->second).value_or(defaultValue);
  } catch (const std::exception&) {
    return defaultValue;  // The contract of ReadRegistry: what cannot be read is the default.
  }
}

void LayoutRegistry::Write(std::string_view section, std::string_view key, std::int32_t value) noexcept {
  try {
    file_.Change([&](NamedValues& values) { values[ValueName(section, key)] = std::to_string(value); });
  } catch (const std::exception&) {
    // The contract of WriteRegistry: the window opens at its default place the next time.
    return;
  }
}

}  // namespace tolvan
