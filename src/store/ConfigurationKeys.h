// The table of all keys of a host configuration, in the order in which a file lists them: reading, checking, writing
// and the explanation of a key stand together in its row. A new key is a new row.
#pragma once

#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "store/HostConfiguration.h"

namespace tolvan {

struct ConfigurationKey {
  std::string_view section;
  std::string_view name;
  /// Spanish, one line. "{motores}" and "{motores de archivo}" stand for the names of the known engines.
  std::string_view explanation;

  /// Takes the value as written, without blanks around it. The result is why the value cannot be used, in Spanish;
  /// nothing when it was taken.
  std::optional<std::string> (*take)(HostConfiguration& configuration, std::string_view value);

  /// The value as a file would give it.
  std::string (*write)(const HostConfiguration& configuration);
};

std::span<const ConfigurationKey> ConfigurationKeys();

}  // namespace tolvan
