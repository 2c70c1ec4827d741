#include "cli/demo/DemoStore.h"

#include <array>
#include <filesystem>
#include <fstream>
#include <set>
#include <string_view>
#include <system_error>
#include <vector>

#include "cli/demo/DemoData.h"
#include "database/sql/SqlScript.h"
#include "database/sqlite/SqliteDatabaseServices.h"
#include "host/HostError.h"
#include "system/posix/PosixFileHelper.h"
#include "system/posix/PosixFiles.h"

namespace tolvan {

namespace data {}

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

constexpr std::array<std::string_view, 9> ownNames = {"tolvan.ini",    "tienda.db",         "tienda.db-wal",
                                                      "tienda.db-shm", "tienda.db-journal", "ajustes",
                                                      "Exportar",      "ejemplos",          "PlantillasImpresion"};

constexpr std::uint32_t registryLines = 2'000;

bool IsDemo(const fs::path& host) {
  std::ifstream file(host);
  std::string line;
  return std::getline(file, line) && line == demoMark;
}

bool IsThere(const fs::path& path) {
  return fs::symlink_status(path).type() != fs::file_type::not_found;
}

/// What is replaced must be a demo store's own; a shop's data never is.
void ClearOldStore(const DemoPlaces& places) {
  if (!IsDemo(places.host)) {
    for (const std::string_view name : ownNames) {
      const fs::path path = fs::path(places.folder) / name;
      if (!IsThere(path)) continue;
      throw HostError(HostErrorKind::Access, "la carpeta tiene datos que no son de una tienda de demostración", path);
    }
  }
  for (const char* suffix : {"", "-wal", "-shm", "-journal"}) fs::remove(places.database + suffix);
  fs::remove_all(fs::path(places.folder) / "ajustes");
}

/// Everything below the names of a demo store, each folder before what it holds.
std::set<fs::path> Contents(const DemoPlaces& places) {
  std::set<fs::path> contents;
  for (const std::string_view name : ownNames) {
    const fs::path path = fs::path(places.folder) / name;
    if (!IsThere(path)) continue;
    contents.insert(path);
    if (!fs::is_directory(fs::symlink_status(path))) continue;
    for (const auto& entry : fs::recursive_directory_iterator(path)) contents.insert(entry.path());
  }
  return contents;
}

/// Removes what has come into the folder since it was made, and the folder itself where it was not there before.
class Undoing {
 public:
  explicit Undoing(const DemoPlaces& places) : places_(places) {
    for (fs::path folder = places.folder; !fs::exists(folder); folder = folder.parent_path())
      missing_.push_back(folder);
    if (missing_.empty()) {
      ClearOldStore(places);
      before_ = Contents(places);
    }
  }

  void Undo() const {
    std::error_code ignored;  // the failure that led here is the one to report
    // What lies in a folder goes before the folder.
    const std::set<fs::path> left = Contents(places_);
    for (const fs::path& path : std::vector<fs::path>(left.rbegin(), left.rend())) {
      if (!before_.contains(path)) fs::remove(path, ignored);
    }
    for (const fs::path& folder : missing_) fs::remove(folder, ignored);
  }

 private:
  const DemoPlaces& places_;
  std::vector<fs::path> missing_;  // from the store's folder upwards
  std::set<fs::path> before_;
};

/// The mark comes first, so that a demo store whose making was killed can be made again.
void FillFolder(const DemoPlaces& places, Date today) {
  PosixFileHelper files(places.folder);
  files.MakeFolder(places.folder);
  WriteDemoFile(places.host, std::string(demoMark) + std::string(configuration));
  files.MakeFolder(places.exportFolder);
  files.MakeFolder(places.examples);
  WriteDemoFile(fs::path(places.examples) / "DGII_RNC.TXT", MakeDemoRegistry(registryLines));
  SqliteDatabaseServices database({.path = places.database, .createIfMissing = true});
  RunSqlScript(database, data::sqliteSchema);
  FillDemoDatabase(database, today);
  WriteDemoWorkbooks(places, today);
}

}  // namespace

void WriteDemoFile(const std::string& path, std::string_view content) {
  const std::unique_ptr<WholeFile> file = PosixFileHelper("/").CreateWhole(path);
  file->Write(content);
  file->Commit();
}

DemoPlaces PlacesOfDemo(const std::string& folder) {
  const fs::path root = fs::absolute(folder).lexically_normal();
  return {.folder = root,
          .host = root / "tolvan.ini",
          .database = root / "tienda.db",
          .exportFolder = root / "Exportar",
          .examples = root / "ejemplos"};
}

void MakeDemoStore(const DemoPlaces& places, Date today, const std::function<void()>& complete) {
  try {
    const Undoing undoing(places);
    try {
      FillFolder(places, today);
      complete();
    } catch (...) {
      undoing.Undo();
      throw;
    }
  } catch (const fs::filesystem_error& error) {
    throw SystemFailure(error.code().value(), error.path1().native());
  }
}

}  // namespace tolvan
