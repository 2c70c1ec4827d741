#include "platform/configuration/HostConfiguration.h"

namespace tolvan {

std::string FolderOfConfiguration(const HostConfiguration& configuration) {
  const std::size_t separator = configuration.filePath.rfind('/');
  if (separator == std::string::npos || separator == 0) return "/";
  return configuration.filePath.substr(0, separator);
}

}  // namespace tolvan
