// The taxpayer registry into an empty customer table, and the same file again with nothing new in it, each against the
// sqlite3 shell's .import of the rows cut beforehand into the same empty table, with a cache of 256 MB.
#include <sys/resource.h>
#include <sys/wait.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <string>

#include "Bench.h"
#include "BenchFolder.h"
#include "RegistryGenerator.h"
#include "RegistryJob.h"
#include "database/sql/SqlDialects.h"
#include "database/sql/SqlScript.h"
#include "database/sqlite/SqliteDatabaseServices.h"

namespace tolvan::data {}

namespace tolvan::bench {
namespace {

constexpr std::uint32_t lines = 800'000;
constexpr double memoryAim = 200;  // MB

void RemoveDatabase(const std::string& path) {
  for (const char* const tail : {"", "-wal", "-shm", "-journal"}) std::filesystem::remove(path + tail);
}

void MakeEmptyDatabase(const std::string& path) {
  RemoveDatabase(path);
  SqliteDatabaseServices database({.path = path, .createIfMissing = true});
  RunSqlScript(database, data::sqliteSchema);
}

RegistryCounts Import(const std::string& databasePath, const std::string& registryPath) {
  SqliteDatabaseServices database({.path = databasePath});
  return ImportRegistry(database, SqliteDialect(), registryPath);
}

void Expect(bool holds, const char* what) {
  if (!holds) Stop(std::string("the import counted otherwise: ") + what);
}

void RunShell(const std::string& databasePath, const std::string& rowsPath) {
  const std::string command = "sqlite3 -batch '" + databasePath +
                              "' 'PRAGMA cache_size=-262144' '.mode list' '.separator |' \".import '" + rowsPath +
                              "' Clientes\" > /dev/null";
  if (std::system(command.c_str()) != 0) Stop("the sqlite3 shell failed");
}

double PeakMegabytes() {
  rusage usage{};
  getrusage(RUSAGE_SELF, &usage);
  return static_cast<double>(usage.ru_maxrss) / 1024;
}

int Main() {
  const BenchFolder folder;
  const std::string registry = folder.File("DGII_RNC.TXT");
  const std::string rows = folder.File("rows.txt");
  const std::string mine = folder.File("import.db");
  const std::string theirs = folder.File("shell.db");
  if (std::system("sqlite3 --version > /dev/null 2>&1") != 0) Stop("the sqlite3 shell is not installed");
  // In a process of its own, so that the peak of memory below is the import's.
  const pid_t child = fork();
  if (child == 0) {
    WriteRegistry(lines, registry, rows);
    std::_Exit(0);
  }
  int status = 0;
  if (child < 0 || waitpid(child, &status, 0) != child || status != 0) Stop("the registry was not written");
  RegistryCounts counts;
  const Work reference{[&] { RunShell(theirs, rows); }, [&] { MakeEmptyDatabase(theirs); }};
  bool reached =
      Compare("registry of 800,000 lines", {[&] { counts = Import(mine, registry); }, [&] { MakeEmptyDatabase(mine); }},
              reference, 0.9, 3);
  Expect(counts.newCustomers == static_cast<std::int32_t>(lines) && counts.errors == 0, "first run");
  reached = Compare("the same file again", {[&] { counts = Import(mine, registry); }}, reference, 0.65, 3) && reached;
  Expect(counts.newCustomers == 0 && counts.notRegistered == 1 && counts.errors == 0, "second run");
  std::printf("peak memory: %.0f MB (aim %.0f)\n", PeakMegabytes(), memoryAim);
  return reached && PeakMegabytes() <= memoryAim ? 0 : 1;
}

}  // namespace
}  // namespace tolvan::bench

int main() {
  return tolvan::bench::Main();
}
