#include "store/HostConfiguration.h"

#include <algorithm>

#include "base/Text.h"

namespace tolvan {
namespace {

/// One "key=value" of an ODBC connection string.
bool IsPassword(std::string_view part) {
  const std::size_t equals = part.find('=');
  if (equals == std::string_view::npos || TrimBlanks(part.substr(equals + 1)).empty()) return false;
  const std::string_view key = TrimBlanks(part.substr(0, equals));
  return EqualIgnoringCase(key, "pwd") || EqualIgnoringCase(key, "password");
}

}  // namespace

std::string FolderOfConfiguration(const HostConfiguration& configuration) {
  const std::size_t separator = configuration.filePath.rfind('/');
  if (separator == std::string::npos || separator == 0) return "/";
  return configuration.filePath.substr(0, separator);
}

bool HasPassword(const HostConfiguration& configuration) {
  return !configuration.mail.password.empty() ||
         std::ranges::any_of(Split(configuration.database.connection, ';'), IsPassword);
}

}  // namespace tolvan
