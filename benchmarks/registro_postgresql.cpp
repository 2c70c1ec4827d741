// The taxpayer registry into an empty customer table on a local PostgreSQL server, started for it on a folder of its
// own, against psql's \copy of the rows cut beforehand into a staging table and one INSERT … SELECT from there. And how
// often the import waits for an answer of the server, which is what a distant one costs.
#include <cstdio>
#include <fstream>

#include "Bench.h"
#include "BenchFolder.h"
#include "RegistryGenerator.h"
#include "RegistryJob.h"
#include "base/Text.h"
#include "database/odbc/OdbcDatabaseServices.h"
#include "database/sql/SqlDialects.h"
#include "database/sql/SqlScript.h"
#include "support/CountingRelay.h"
#include "support/PostgresServer.h"

namespace tolvan::data {}

namespace tolvan::bench {
namespace {

constexpr std::uint32_t lines = 100'000;
constexpr int tripsAim = lines / 500;

void Import(const std::string& connection, const std::string& registry) {
  OdbcDatabaseServices database({.dialect = &test::postgreSqlDialect, .connection = connection});
  const RegistryCounts counts = ImportRegistry(database, test::postgreSqlDialect, registry);
  if (counts.newCustomers != static_cast<std::int32_t>(lines) || counts.errors != 0)
    Stop("the import counted otherwise");
}

int Main() {
  const BenchFolder folder;
  const std::string registry = folder.File("DGII_RNC.TXT");
  const std::string rows = folder.File("rows.txt");
  const std::string script = folder.File("reference.sql");
  WriteRegistry(lines, registry, rows);
  std::ofstream(script) << "CREATE TEMPORARY TABLE Carga (LIKE Clientes);\n\\copy Carga FROM '" << rows
                        << "' WITH (DELIMITER '|')\n"
                           "INSERT INTO Clientes SELECT * FROM Carga ON CONFLICT (idCliente) DO NOTHING;\n";
  test::PostgresServer server("on");
  const std::string name = server.MakeDatabase();
  const std::string connection = server.ConnectionString(name);
  {
    OdbcDatabaseServices database({.dialect = &test::postgreSqlDialect, .connection = connection});
    RunSqlScript(database, data::postgreSqlSchema);
  }
  const auto empty = [&] { server.Psql(name, "TRUNCATE Clientes"); };
  const bool reached =
      Compare("registry of 100,000 lines into PostgreSQL", {[&] { Import(connection, registry); }, empty},
              {[&] { server.Psql(name, "\\i " + script); }, empty}, 2, 5);
  test::CountingRelay relay(server.Folder());
  const std::string relayed = ReplaceAll(connection, server.Folder().string(), relay.Folder().string());
  empty();
  const int trips = relay.RoundTripsOf([&] { Import(relayed, registry); });
  std::printf("round trips: %d (aim %d)\n", trips, tripsAim);
  return reached && trips <= tripsAim ? 0 : 1;
}

}  // namespace
}  // namespace tolvan::bench

int main() {
  return tolvan::bench::Main();
}
