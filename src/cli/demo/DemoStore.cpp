#include "cli/demo/DemoStore.h"

#include <filesystem>
#include <fstream>
#include <string_view>

#include "cli/demo/DemoDatabase.h"
#include "cli/demo/DemoFiles.h"
#include "cli/demo/DemoRegistry.h"
#include "cli/demo/DemoWorkbooks.h"
#include "host/HostError.h"
#include "platform/sql/SqlScript.h"
#include "platform/sqlite/SqliteDatabaseServices.h"

namespace tolvan {

namespace data {
extern const std::string_view sqliteSchema;
}

namespace {

namespace fs = std::filesystem;

constexpr std::string_view demoMark = "; Tienda de demostración de Tolvan: Importar y Exportar Datos";

constexpr std::string_view configuration = R"(
[host]
producto = Tolvan
carpeta = .
compania = 1
sede = 1
tienda = 0001
permisos = importar-precios
ajustes = ajustes
[base_de_datos]
motor = sqlite
conexion = tienda.db
[correo]
remitente = tienda@example.com
destinatario = reportes@example.com
)";

constexpr std::uint32_t registryLines = 2'000;

bool IsDemo(const fs::path& host) {
  std::ifstream file(host);
  std::string line;
  return std::getline(file, line) && line == demoMark;
}

/// What is replaced must be a demo store's own; a shop's data never is.
void ClearOldStore(const DemoPlaces& places) {
  const bool occupied = fs::exists(places.host) || fs::exists(places.database);
  if (occupied && !IsDemo(places.host)) {
    throw HostError(HostErrorKind::Access, "la carpeta tiene datos que no son de una tienda de demostración",
                    places.folder);
  }
  for (const char* suffix : {"", "-wal", "-shm"}) fs::remove(places.database + suffix);
  fs::remove_all(fs::path(places.folder) / "ajustes");
}

}  // namespace

DemoPlaces PlacesOfDemo(const std::string& folder) {
  const fs::path root = fs::absolute(folder).lexically_normal();
  return {.folder = root,
          .host = root / "tolvan.ini",
          .database = root / "tienda.db",
          .exportFolder = root / "Exportar",
          .examples = root / "ejemplos"};
}

void MakeDemoStore(const DemoPlaces& places, Date today) {
  try {
    fs::create_directories(places.folder);
    ClearOldStore(places);
    fs::create_directories(places.exportFolder);
    fs::create_directories(places.examples);
  } catch (const fs::filesystem_error& error) {
    throw HostError(HostErrorKind::Access, error.code().message(), error.path1().string());
  }
  // The mark comes first, so that a demo store that was interrupted half-made can be made again.
  WriteDemoFile(places.host, std::string(demoMark) + std::string(configuration));
  WriteDemoFile(fs::path(places.examples) / "DGII_RNC.TXT", MakeDemoRegistry(registryLines));
  SqliteDatabaseServices database({.path = places.database, .createIfMissing = true});
  RunSqlScript(database, data::sqliteSchema);
  FillDemoDatabase(database, today);
  WriteDemoWorkbooks(places, today);
}

}  // namespace tolvan
