// An import whose server, or whose process on the server, dies while it applies and while it commits.
#include <gmock/gmock.h>
#include <signal.h>
#include <unistd.h>

#include <functional>
#include <thread>

#include "database/odbc/OdbcDatabaseServices.h"
#include "servers/ServerStore.h"

namespace tolvan::test {
namespace {

using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

constexpr int items = 150;

class ImportFailures : public ::testing::Test {
 protected:
  ImportFailures() { store_.AddItems(items); }

  ImportOutcome Apply() { return store_.ImportTemplate(database_, items); }

  void ExpectNothing() const {
    EXPECT_EQ(store_.Ask("SELECT count(*) FROM Items"), std::to_string(items));
    EXPECT_EQ(store_.Ask("SELECT count(*), sum(CostoActual) FROM ItemsUnidadesInv"), "150|1500.0000");
    EXPECT_EQ(store_.Ask("SELECT count(*), sum(Precio) FROM Precios"), "150|15000.0000");
  }

  void ExpectEverything() const {
    EXPECT_EQ(store_.Ask("SELECT count(*) FROM Items"), std::to_string(2 * items));
    EXPECT_EQ(store_.Ask("SELECT count(*) FROM Precios WHERE Precio IN (200, 1000, 10)"), std::to_string(6 * items));
  }

  /// Makes the server sleep in that trigger.
  void SleepIn(const std::string& trigger) const {
    const std::string function =
        "CREATE OR REPLACE FUNCTION Esperar() RETURNS trigger LANGUAGE plpgsql AS "
        "$$BEGIN PERFORM pg_sleep(60); RETURN NULL; END$$;";
    store_.Ask(function + "CREATE " + trigger + " EXECUTE FUNCTION Esperar()");
  }

  /// Does `work`, and does `action` to the process on the server as soon as that waits for what `waitEvent` names.
  void Disturb(const std::string& waitEvent, const std::function<void(pid_t)>& action,
               const std::function<void()>& work) {
    const pid_t backend = BackendOf(database_);
    std::thread other([&] {
      const std::string ask = "SELECT count(*) FROM pg_stat_activity WHERE pid = " + std::to_string(backend) +
                              " AND wait_event = '" + waitEvent + "'";
      for (int attempt = 0; attempt < 1000; ++attempt) {
        if (store_.Ask(ask) == "1") return action(backend);
        ::usleep(10'000);
      }
      ADD_FAILURE() << "it never waited for " << waitEvent;
    });
    work();
    other.join();
  }

  void DisturbCommit(const std::string& waitEvent, const std::function<void(pid_t)>& action) {
    ImportOutcome outcome;
    Disturb(waitEvent, action, [&] { outcome = Apply(); });
    EXPECT_FALSE(outcome.applied);
    EXPECT_THAT(FailureText(outcome), HasSubstr("La operación no pudo concluirse"));
    EXPECT_THAT(FailureText(outcome), HasSubstr("No se sabe si los cambios quedaron guardados"));
  }

  ServerStore store_;
  OdbcDatabaseServices database_{{.dialect = &postgreSqlDialect, .connection = store_.connection}};
};

constexpr auto whenSomeBlocksAreWritten = "TRIGGER Lento AFTER INSERT ON Items FOR EACH ROW WHEN (NEW.idItem = 'N125')";

void KillProcess(pid_t backend) {
  ::kill(backend, SIGKILL);
}

TEST_F(ImportFailures, AProcessKilledWhileItAppliesLeavesNothingAndTheNextImportWorks) {
  SleepIn(whenSomeBlocksAreWritten);
  ImportOutcome outcome;
  Disturb("PgSleep", KillProcess, [&] { outcome = Apply(); });
  EXPECT_FALSE(outcome.applied);
  EXPECT_THAT(FailureText(outcome), HasSubstr("No se puede acceder"));
  store_.server.Restart();
  ExpectNothing();
  store_.Ask("DROP TRIGGER Lento ON Items");
  EXPECT_TRUE(Apply().applied);
  ExpectEverything();
}

TEST_F(ImportFailures, AServerKilledWhileItAppliesLeavesNothing) {
  SleepIn(whenSomeBlocksAreWritten);
  Disturb(
      "PgSleep", [this](pid_t) { store_.server.Signal(SIGKILL); }, [&] { EXPECT_FALSE(Apply().applied); });
  store_.server.Restart();
  ExpectNothing();
}

TEST_F(ImportFailures, AProcessKilledWhileItWritesOrCommitsTheRegistryEndsIt) {
  const std::string registry = MakeRegistry(9'000);
  const struct {
    std::string trigger, message;
  } cases[] = {{"TRIGGER Lento AFTER INSERT ON Clientes", "No se puede acceder"},
               {"CONSTRAINT TRIGGER Lento AFTER INSERT ON Clientes DEFERRABLE INITIALLY DEFERRED",
                "Se perdió la conexión; un grupo de líneas puede haber quedado registrado sin contarse"}};
  for (const auto& [trigger, message] : cases) {
    SleepIn(trigger + " FOR EACH ROW WHEN (NEW.Descripcion = 'EMPRESA 6000, SRL')");
    RegistryRun run;
    Disturb("PgSleep", KillProcess, [&] { run = ImportRegistry(database_, postgreSqlDialect, registry); });
    EXPECT_FALSE(run.finished);
    EXPECT_EQ(run.counts.newCustomers, 4'000);
    EXPECT_EQ(run.counts.errors, 0);
    EXPECT_THAT(run.message, StartsWith(message));
    EXPECT_THAT(run.message, Not(HasSubstr("INSERT INTO"))) << "it would hold the whole batch";
    store_.server.Restart();
    EXPECT_EQ(store_.Ask("SELECT count(*) FROM Clientes"), "4000");
    store_.Ask("DROP TRIGGER Lento ON Clientes");
    EXPECT_EQ(ImportRegistry(database_, postgreSqlDialect, registry).counts.newCustomers, 5'000);
    store_.Ask("DELETE FROM Clientes");
  }
}

TEST_F(ImportFailures, AProcessKilledInTheCommitBeforeItWasKeptLeavesNothing) {
  SleepIn("CONSTRAINT TRIGGER Lento AFTER INSERT ON Marcas DEFERRABLE INITIALLY DEFERRED FOR EACH ROW");
  DisturbCommit("PgSleep", KillProcess);
  store_.server.Restart();
  ExpectNothing();
}

TEST_F(ImportFailures, AProcessKilledInTheCommitAfterItWasKeptLeavesEverything) {
  database_.Execute(SqlStatement("SET synchronous_commit = on"));
  DisturbCommit("SyncRep", KillProcess);
  store_.server.Restart();
  ExpectEverything();
}

}  // namespace
}  // namespace tolvan::test
