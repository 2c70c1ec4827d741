// A server whose tables lie on a full disk: a small file system of its own.
#include <gmock/gmock.h>
#include <sched.h>
#include <sys/mount.h>
#include <unistd.h>

#include "database/odbc/OdbcDatabaseServices.h"
#include "servers/ServerStore.h"

namespace tolvan::test {
namespace {

using testing::HasSubstr;

/// Mounts a file system of two megabytes that this process and its children see, and nobody else. Who is not root does
/// it in a name space of users. False where nobody may.
bool MountSmallDisk(const std::filesystem::path& place) {
  const std::string user = std::to_string(::geteuid());
  const std::string group = std::to_string(::getegid());
  const bool root = ::geteuid() == 0;
  if (::unshare(CLONE_NEWNS | (root ? 0 : CLONE_NEWUSER)) != 0) return false;
  if (!root) {
    WriteFile("/proc/self/setgroups", "deny");
    WriteFile("/proc/self/uid_map", user + " " + user + " 1");
    WriteFile("/proc/self/gid_map", group + " " + group + " 1");
  }
  return ::mount("none", "/", nullptr, MS_REC | MS_PRIVATE, nullptr) == 0 &&
         ::mount("none", place.c_str(), "tmpfs", 0, "size=2M,mode=777") == 0;
}

TEST(FullDisk, EndsTheRegistryWithWhatFitsAndAnImportWithNothing) {
  const TemporaryFolder disk;
  if (!MountSmallDisk(disk.Path())) GTEST_SKIP() << "NOT RUN: no file system may be mounted";
  ServerStore store;
  const std::string tables = disk.File("tablas");
  store.Ask("COPY (SELECT) TO PROGRAM 'mkdir -m 700 " + tables + "'");
  store.Ask("CREATE TABLESPACE chico LOCATION '" + tables + "'");
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
