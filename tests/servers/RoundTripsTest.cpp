// What a distant server costs: how often the imports wait for an answer. A relay counts at the socket.
#include <gmock/gmock.h>

#include "base/Text.h"
#include "database/odbc/OdbcDatabaseServices.h"
#include "servers/ServerStore.h"
#include "support/CountingRelay.h"

namespace tolvan::test {
namespace {

class RoundTrips : public ::testing::Test {
 protected:
  ServerStore store_;
  CountingRelay relay_{store_.server.Folder()};
  OdbcDatabaseServices database_{
      {.dialect = &postgreSqlDialect,
       .connection = ReplaceAll(store_.connection, store_.server.Folder().string(), relay_.Folder().string())}};
};

TEST_F(RoundTrips, OfTheTemplateAreFew) {
  constexpr int rows = 1'000;
  store_.AddItems(rows / 2);
  int applying = 0;
  ImportOutcome outcome;
  const int all = relay_.RoundTripsOf([&] {
    outcome = store_.ImportTemplate(database_, rows / 2, [&](IClaseImportar& importer) {
      applying = relay_.RoundTripsOf([&] { EXPECT_TRUE(importer.Iniciar(store_.status)); });
    });
  });
  ASSERT_TRUE(outcome.applied) << FailureText(outcome);
  EXPECT_EQ(outcome.created, rows / 2);
  EXPECT_EQ(outcome.updated, rows / 2);
  EXPECT_EQ(store_.Ask("SELECT count(*) FROM Precios WHERE Precio IN (200, 1000, 10)"), "3000");
  EXPECT_LE(all - applying, rows / 50) << "classifying";
  EXPECT_LE(applying, rows / 10);
  EXPECT_GE(applying, rows / 250) << "the relay counts nothing";
}

TEST_F(RoundTrips, OfTheRegistryAreFewAndItsCountsExact) {
  constexpr int customers = 10'000;
  const std::string registry = MakeRegistry(customers);
  const std::string some = registry.substr(0, registry.find('\n', registry.size() / 10) + 1);
  const std::int32_t known = ImportRegistry(database_, postgreSqlDialect, some + some).counts.newCustomers;
  EXPECT_EQ(known, std::ranges::count(some, '\n'));
  RegistryRun run;
  const int trips = relay_.RoundTripsOf([&] { run = ImportRegistry(database_, postgreSqlDialect, registry + some); });
  ASSERT_TRUE(run.finished) << run.message;
  EXPECT_LE(trips, run.counts.lines / 500);
  EXPECT_GE(trips, 2) << "the relay counts nothing";
  EXPECT_EQ(run.counts.newCustomers, customers - known);
  EXPECT_EQ(run.counts.present, 2 * known);
  EXPECT_EQ(run.counts.notRegistered, customers - known + 1);
  EXPECT_EQ(store_.Ask("SELECT count(*) FROM Clientes"), std::to_string(customers));
}

TEST_F(RoundTrips, AFailingStatementOfTheRegistryCountsAloneAndTheNextOfItsCodeGetsItsChance) {
  store_.Ask("ALTER TABLE Clientes ADD CHECK (Descripcion <> 'MALA')");
  const std::string registry =
      "101012341|MALA\r\n" + MakeRegistry(2'000) + "101012341|BUENA \"\\\\{},'\r\n101012341|X\r\n";
  const RegistryRun run = ImportRegistry(database_, postgreSqlDialect, registry);
  ASSERT_TRUE(run.finished) << run.message;
  EXPECT_EQ(run.counts.newCustomers, 2'001);
  EXPECT_EQ(run.counts.errors, 1);
  EXPECT_EQ(run.counts.present, 1);
  EXPECT_THAT(run.rejected, testing::StartsWith("1\tla base de datos rechazó el registro: "));
  EXPECT_EQ(store_.Ask("SELECT Descripcion FROM Clientes WHERE idCliente = '101012341'"), "BUENA \"\\\\{},'");
}

}  // namespace
}  // namespace tolvan::test
