#include "cli/demo/DemoFiles.h"

#include <fstream>

#include "host/HostError.h"

namespace tolvan {

void WriteDemoFile(const std::string& path, std::string_view content) {
  std::ofstream file(path, std::ios::binary | std::ios::trunc);
  file << content;
  file.close();
  if (!file) throw HostError(HostErrorKind::Access, "no se pudo escribir el archivo", path);
}

}  // namespace tolvan
