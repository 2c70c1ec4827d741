// An import whose server, or whose process on the server, dies while it applies and while it commits.
#include <gmock/gmock.h>
#include <signal.h>
#include <unistd.h>

#include <functional>
#include <thread>

#include "platform/odbc/OdbcDatabaseServices.h"
#include "servers/ServerStore.h"

namespace tolvan::test {
namespace {

using testing::HasSubstr;

constexpr int items = 150;

constexpr int atCommit = 0;
constexpr int never = -1;

/// A status window that does something at the import's `step`-th row, or when it is about to commit.
class ActingStatus final : public StatusWindow {
 public:
  ActingStatus(int step, std::function<void()> action) : step_(step), action_(std::move(action)) {}

  std::unique_ptr<StatusDisplay> OpenStatus() override { return std::make_unique<Display>(*this); }

 private:
  struct Display final : StatusDisplay {
    explicit Display(ActingStatus& owner) : window(&owner) {}
    void SetText(std::string_view text) override {
      if (window->step_ == atCommit && text == "Finalizando transacción") window->action_();
    }
    void SetRange(std::int32_t) override {}
    void Advance() override {
      if (window->step_ != atCommit && --window->left_ == 0) window->action_();
    }
    ActingStatus* window;
  };

  int step_;
  int left_ = step_;
  std::function<void()> action_;
};

class ImportFailures : public ::testing::Test {
 protected:
  ImportFailures() { store_.AddItems(items); }

  pid_t Backend() {
    const auto row = database_.OpenRecordset(SqlStatement("SELECT pg_backend_pid()"));
    return static_cast<pid_t>(*IntegerOf(row->Value(std::size_t{0})));
  }

  ImportOutcome Apply(StatusWindow& status) {
    return store_.ImportTemplate(database_, ServerStore::TemplateRows(items),
                                 [&](IClaseImportar& importer) { importer.Iniciar(status); });
  }

  void ExpectNothing() const {
    EXPECT_EQ(store_.Ask("SELECT count(*) FROM Items"), std::to_string(items));
    EXPECT_EQ(store_.Ask("SELECT count(*), sum(CostoActual) FROM ItemsUnidadesInv"), "150|1500.0000");
    EXPECT_EQ(store_.Ask("SELECT count(*), sum(Precio) FROM Precios"), "150|15000.0000");
  }

  void ExpectEverything() const {
    EXPECT_EQ(store_.Ask("SELECT count(*) FROM Items"), std::to_string(2 * items));
    EXPECT_EQ(store_.Ask("SELECT count(*) FROM Precios WHERE Precio IN (200, 1000, 10)"), std::to_string(6 * items));
  }

  /// A thread that does it as soon as the process on the server waits for what `waitEvent` names.
  std::thread WhenItWaits(pid_t backend, const std::string& waitEvent, const std::function<void(pid_t)>& action) const {
    return std::thread([=, this] {
      const std::string ask = "SELECT count(*) FROM pg_stat_activity WHERE pid = " + std::to_string(backend) +
                              " AND wait_event = '" + waitEvent + "'";
      for (int attempt = 0; attempt < 500; ++attempt) {
        if (store_.Ask(ask) == "1") return action(backend);
        ::usleep(10'000);
      }
      ADD_FAILURE() << "it never waited for " << waitEvent;
    });
  }

  void WhileItCommits(const std::string& waitEvent, const std::function<void(pid_t)>& action) {
    const pid_t backend = Backend();
    std::thread other;
    ActingStatus status(atCommit, [&] { other = WhenItWaits(backend, waitEvent, action); });
    const ImportOutcome outcome = Apply(status);
    if (other.joinable()) other.join();
    EXPECT_FALSE(outcome.applied);
    EXPECT_THAT(FailureText(outcome), HasSubstr("La operación no pudo concluirse"));
    EXPECT_THAT(FailureText(outcome), HasSubstr("No se sabe si los cambios quedaron guardados"));
  }

  ServerStore store_;
  OdbcDatabaseServices database_{{.connection = store_.connection}};
};

TEST_F(ImportFailures, AProcessKilledWhileItAppliesLeavesNothingAndTheNextImportWorks) {
  const pid_t backend = Backend();
  ActingStatus status(250, [&] { ::kill(backend, SIGKILL); });  // when some blocks are written
  const ImportOutcome outcome = Apply(status);
  EXPECT_FALSE(outcome.applied);
  EXPECT_THAT(FailureText(outcome), HasSubstr("No se puede acceder"));
  store_.server.WaitUntilItAnswers();
  ExpectNothing();
  ActingStatus quiet(never, {});
  EXPECT_TRUE(Apply(quiet).applied);
  ExpectEverything();
}

TEST_F(ImportFailures, AServerKilledWhileItAppliesLeavesNothing) {
  ActingStatus status(250, [&] {
    store_.server.Kill();
    ::usleep(100'000);  // its processes notice
  });
  EXPECT_FALSE(Apply(status).applied);
  store_.server.Start();
  ExpectNothing();
}

TEST_F(ImportFailures, AProcessKilledWhileItWritesTheRegistryEndsIt) {
  const std::string registry = MakeRegistry(9'000);
  store_.Ask(
      "CREATE FUNCTION Esperar() RETURNS trigger LANGUAGE plpgsql AS $$BEGIN"
      " IF (SELECT count(*) FROM Clientes) = 8000 THEN PERFORM pg_sleep(60); END IF; RETURN NULL; END$$;"
      "CREATE TRIGGER Lento AFTER INSERT ON Clientes FOR EACH STATEMENT EXECUTE FUNCTION Esperar()");
  std::thread other = WhenItWaits(Backend(), "PgSleep", [](pid_t backend) { ::kill(backend, SIGKILL); });
  const RegistryRun run = store_.ImportRegistry(database_, registry);
  other.join();
  EXPECT_FALSE(run.finished);
  EXPECT_EQ(run.counts.newCustomers, 4'000);
  EXPECT_EQ(run.counts.errors, 0);
  EXPECT_THAT(run.message, HasSubstr("puede haber quedado registrado sin contarse"));
  store_.server.WaitUntilItAnswers();
  EXPECT_EQ(store_.Ask("SELECT count(*) FROM Clientes"), "4000");
  store_.Ask("DROP TRIGGER Lento ON Clientes");
  EXPECT_EQ(store_.ImportRegistry(database_, registry).counts.newCustomers, 5'000);
}

TEST_F(ImportFailures, AProcessKilledInTheCommitBeforeItWasKeptLeavesNothing) {
  store_.Ask(
      "CREATE FUNCTION Esperar() RETURNS trigger LANGUAGE plpgsql AS $$BEGIN PERFORM pg_sleep(60); RETURN NULL; END$$;"
      "CREATE CONSTRAINT TRIGGER Lento AFTER INSERT ON Marcas DEFERRABLE INITIALLY DEFERRED FOR EACH ROW"
      " EXECUTE FUNCTION Esperar()");
  WhileItCommits("PgSleep", [](pid_t backend) { ::kill(backend, SIGKILL); });
  store_.server.WaitUntilItAnswers();
  ExpectNothing();
}

TEST_F(ImportFailures, AProcessKilledInTheCommitAfterItWasKeptLeavesEverything) {
  database_.Execute(SqlStatement("SET synchronous_commit = on"));
  WhileItCommits("SyncRep", [](pid_t backend) { ::kill(backend, SIGKILL); });
  store_.server.WaitUntilItAnswers();
  ExpectEverything();
}

TEST_F(ImportFailures, AServerKilledInTheCommitAfterItWasKeptLeavesEverything) {
  database_.Execute(SqlStatement("SET synchronous_commit = on"));
  WhileItCommits("SyncRep", [this](pid_t) { store_.server.Kill(); });
  store_.server.Start();
  ExpectEverything();
}

}  // namespace
}  // namespace tolvan::test
