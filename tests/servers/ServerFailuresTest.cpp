// What is left on the server, and how long the caller waits, when the server or the way to it fails.
#include <gmock/gmock.h>
#include <signal.h>
#include <unistd.h>

#include <chrono>

#include "database/odbc/OdbcDatabaseServices.h"
#include "support/FakeHost.h"
#include "support/PostgresServer.h"
#include "support/ThrownBy.h"

namespace tolvan::test {
namespace {

using std::chrono::seconds;
using std::chrono::steady_clock;

class ServerFailures : public ::testing::Test {
 protected:
  ServerFailures() { Execute("CREATE TABLE Prueba (Codigo INTEGER PRIMARY KEY)"); }

  void Execute(const std::string& text) { database_.Execute(SqlStatement(text)); }
  std::string Count() const { return server_.Psql(name_, "SELECT count(*) FROM Prueba"); }

  std::unique_ptr<Transaction> BeginWithRows() {
    auto transaction = database_.BeginTransaction();
    const std::vector<SqlStatement> rows{SqlStatement("INSERT INTO Prueba VALUES (1)"),
                                         SqlStatement("INSERT INTO Prueba VALUES (2)")};
    for (const BatchResult& result : database_.RunBatch(rows)) EXPECT_EQ(result.affectedRows, 1);
    return transaction;
  }

  PostgresServer& server_ = PostgresServer::Shared();
  std::string name_ = server_.MakeDatabase();
  FakeInterruption interruption_;
  OdbcDatabaseServices database_{{.dialect = &postgreSqlDialect,
                                  .connection = server_.ConnectionString(name_),
                                  .statementLimit = seconds(1),
                                  .grace = seconds(1),
                                  .interruption = &interruption_}};
};

TEST_F(ServerFailures, AFrozenServerEndsWithTheTimeout) {
  const pid_t backend = BackendOf(database_);
  auto transaction = BeginWithRows();
  server_.Signal(SIGSTOP);
  ::kill(backend, SIGSTOP);
  const auto begin = steady_clock::now();
  EXPECT_EQ(KindThrownBy([&] { Execute("INSERT INTO Prueba VALUES (3)"); }), HostErrorKind::Timeout);
  EXPECT_EQ(KindThrownBy([&] { transaction->Commit(); }), HostErrorKind::Timeout);
  EXPECT_LT(steady_clock::now() - begin, seconds(6));
  ::kill(backend, SIGCONT);
  server_.Signal(SIGCONT);
  Execute("INSERT INTO Prueba VALUES (4)");
  EXPECT_EQ(Count(), "1");
}

TEST_F(ServerFailures, ASlowStatementEndsAtItsLimitAndTheConnectionWorksOn) {
  const pid_t backend = BackendOf(database_);
  // The server needs a moment to end it, for which we wait.
  const HostError error = ThrownBy([&] {
    Execute("DO $$BEGIN PERFORM pg_sleep(20); EXCEPTION WHEN query_canceled THEN PERFORM pg_sleep(0.3); RAISE; END$$");
  });
  EXPECT_EQ(error.Kind(), HostErrorKind::Timeout);
  EXPECT_STREQ(error.what(), "[57014] el servidor detuvo la instrucción");
  EXPECT_EQ(BackendOf(database_), backend);
}

TEST_F(ServerFailures, AreToldByTheirState) {
  const struct {
    const char* state;
    HostErrorKind kind;
    const char* reason;
  } cases[] = {
      {"40P01", HostErrorKind::Busy, "el servidor deshizo la transacción porque chocaba con la de otro programa"},
      {"55P03", HostErrorKind::Busy, "otro programa tiene bloqueado el registro"},
      {"23502", HostErrorKind::Constraint, "falta un dato obligatorio"},
      {"23503", HostErrorKind::Constraint, "el registro nombra a otro que no existe, o es nombrado por otros"},
      {"22003", HostErrorKind::Constraint, "un número no cabe en su columna"},
      {"53100", HostErrorKind::Full, "el disco del servidor está lleno"},
      {"58030", HostErrorKind::Unreachable, "el servidor no pudo leer o escribir en su disco"},
      {"XX001", HostErrorKind::Damaged, "el controlador o el servidor dice «ERROR: dicho por el servidor"},
  };
  for (const auto& [state, kind, reason] : cases) {
    const HostError error = ThrownBy([&, number = state] {
      Execute("DO $$BEGIN RAISE 'dicho por el servidor' USING ERRCODE = '" + std::string(number) + "'; END$$");
    });
    EXPECT_EQ(error.Kind(), kind) << state;
    EXPECT_THAT(error.what(), testing::StartsWith("[" + std::string(state) + "] " + reason));
  }
  const HostError unknown = ThrownBy([&] {
    OdbcDatabaseServices({.dialect = &postgreSqlDialect, .connection = server_.ConnectionString(name_, "nadie")});
  });
  EXPECT_EQ(unknown.Kind(), HostErrorKind::Unreachable);
  EXPECT_THAT(unknown.what(), testing::HasSubstr("\"nadie\" does not exist"));
}

TEST_F(ServerFailures, AnInterruptionEndsAStatementAndItsTransaction) {
  auto transaction = BeginWithRows();
  interruption_.requested = true;
  EXPECT_EQ(KindThrownBy([&] { Execute("UPDATE Prueba SET Codigo = 7 WHERE pg_sleep(0.9) IS NOT NULL"); }),
            HostErrorKind::Interrupted);
  interruption_.requested = false;
  EXPECT_EQ(KindThrownBy([&] { transaction->Commit(); }), HostErrorKind::Interrupted);
  EXPECT_EQ(Count(), "0");
}

TEST_F(ServerFailures, AnInterruptionDoesNotStopACommit) {
  Execute(
      "CREATE FUNCTION Esperar() RETURNS trigger LANGUAGE plpgsql AS "
      "$$BEGIN PERFORM pg_sleep(0.2); RETURN NULL; END$$");
  Execute(
      "CREATE CONSTRAINT TRIGGER Lento AFTER INSERT ON Prueba DEFERRABLE INITIALLY DEFERRED FOR EACH ROW "
      "EXECUTE FUNCTION Esperar()");
  auto transaction = BeginWithRows();
  interruption_.requested = true;
  transaction->Commit();
  EXPECT_EQ(Count(), "2");
}

}  // namespace
}  // namespace tolvan::test
