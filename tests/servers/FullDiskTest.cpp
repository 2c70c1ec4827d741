// A server whose tables lie on a full disk: a small file system of its own.
#include <gmock/gmock.h>

#include "database/odbc/OdbcDatabaseServices.h"
#include "servers/ServerStore.h"

namespace tolvan::test {
namespace {

using testing::HasSubstr;

constexpr std::size_t diskSize = 2U << 20;

TEST(FullDisk, EndsTheRegistryWithWhatFitsAndAnImportWithNothing) {
  std::unique_ptr<PostgresServer> server;
  try {
    server = std::make_unique<PostgresServer>(PostgresServer::Options{.smallDisk = diskSize});
  } catch (const CannotMount& refusal) {
    GTEST_SKIP() << "NOT RUN: " << refusal.what();
  }
  server->Psql("postgres", "CREATE TABLESPACE chico LOCATION '" + server->SmallDisk() + "'");
  ServerStore store(*server);
  store.AddItems(300);
  for (const char* what : {"TABLE Clientes", "INDEX Clientes_pkey", "TABLE Precios", "INDEX Precios_pkey"}) {
    store.Ask("ALTER " + std::string(what) + " SET TABLESPACE chico");
  }
  OdbcDatabaseServices database({.dialect = &postgreSqlDialect, .connection = store.connection});
  constexpr int customers = 30'000;
  const std::string registry = MakeRegistry(customers);

  const RegistryRun full = ImportRegistry(database, postgreSqlDialect, registry);
  EXPECT_FALSE(full.finished);
  EXPECT_THAT(full.message, HasSubstr("No queda espacio disponible"));
  EXPECT_GT(full.counts.newCustomers, 0);
  EXPECT_EQ(full.counts.errors, 0) << "the disk is no fault of a line";
  EXPECT_EQ(store.Ask("SELECT count(*) FROM Clientes"), std::to_string(full.counts.newCustomers));

  const ImportOutcome refused = store.ImportTemplate(database, 300);
  EXPECT_FALSE(refused.applied);
  EXPECT_THAT(FailureText(refused), HasSubstr("No queda espacio disponible"));
  EXPECT_EQ(store.Ask("SELECT count(*) FROM Items"), "300");
  EXPECT_EQ(store.Ask("SELECT count(*), sum(Precio) FROM Precios"), "300|30000.0000");
  EXPECT_EQ(store.Ask("SELECT count(*), sum(CostoActual) FROM ItemsUnidadesInv"), "300|3000.0000");

  for (const char* what : {"TABLE Clientes", "INDEX Clientes_pkey"}) {
    store.Ask("ALTER " + std::string(what) + " SET TABLESPACE pg_default");
  }
  EXPECT_TRUE(store.ImportTemplate(database, 300).applied) << "there is room again";
  const RegistryRun rest = ImportRegistry(database, postgreSqlDialect, registry);
  EXPECT_TRUE(rest.finished) << rest.message;
  EXPECT_EQ(rest.counts.newCustomers, customers - full.counts.newCustomers);
}

}  // namespace
}  // namespace tolvan::test
