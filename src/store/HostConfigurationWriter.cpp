#include "store/HostConfigurationWriter.h"

#include "base/Text.h"
#include "host/HostError.h"
#include "store/ConfigurationKey.h"
#include "store/HostConfigurationReader.h"

namespace tolvan {
namespace {

std::string EntryOf(const ConfigurationKey& key, const std::string& value) {
  std::string line(key.name);
  line.append(" =");
  if (!value.empty()) line.append(" ").append(value);
  constexpr std::size_t commentColumn = 34;
  const std::size_t length = CountCharacters(line);
  line.append(length < commentColumn ? commentColumn - length : 1, ' ');
  return line.append("; ").append(key.explanation).append("\n");
}

}  // namespace

std::string WriteHostConfiguration(const HostConfiguration& configuration) {
  std::string text = "; Configuración de " + configuration.product + ": importar y exportar datos.\n";
  std::string_view section;
  for (const ConfigurationKey& key : ConfigurationKeys()) {
    if (key.section != section) text.append("\n[").append(key.section).append("]\n");
    section = key.section;
    text.append(EntryOf(key, key.write(configuration)));
  }
  // Reading it back is the one sure test of what a file can give.
  const HostConfiguration again = ParseHostConfiguration(text, configuration.filePath, configuration.database.known);
  for (const ConfigurationKey& key : ConfigurationKeys()) {
    if (key.write(again) == key.write(configuration)) continue;
    throw HostError(HostErrorKind::InvalidValue, "el valor de «" + std::string(key.name) + "» no cabe en el archivo");
  }
  return text;
}

}  // namespace tolvan
