// What is left on the server, and how long the caller waits, when the server or the way to it fails.
#include <gtest/gtest.h>
#include <signal.h>
#include <unistd.h>

#include <chrono>

#include "database/odbc/OdbcDatabaseServices.h"
#include "support/FakeHost.h"
#include "support/PostgresServer.h"
#include "support/ThrownBy.h"

namespace tolvan::test {
namespace {

using std::chrono::milliseconds;
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
                                  .grace = milliseconds(500),
                                  .interruption = &interruption_}};
};

TEST_F(ServerFailures, ABackendKilledBeforeAStatementLeavesNothing) {
  const pid_t backend = BackendOf(database_);
  auto transaction = BeginWithRows();
  ::kill(backend, SIGKILL);
  EXPECT_EQ(KindThrownBy([&] { Execute("INSERT INTO Prueba VALUES (3)"); }), HostErrorKind::Unreachable);
  EXPECT_EQ(KindThrownBy([&] { transaction->Commit(); }), HostErrorKind::Unreachable);
  server_.WaitUntilItAnswers();
  EXPECT_EQ(Count(), "0");
  Execute("INSERT INTO Prueba VALUES (4)");  // on a new connection
  EXPECT_EQ(Count(), "1");
}

TEST_F(ServerFailures, AFrozenServerEndsWithTheTimeout) {
  const pid_t backend = BackendOf(database_);
  auto transaction = BeginWithRows();
  server_.Signal(SIGSTOP);
  ::kill(backend, SIGSTOP);
  const auto begin = steady_clock::now();
  EXPECT_EQ(KindThrownBy([&] { Execute("INSERT INTO Prueba VALUES (3)"); }), HostErrorKind::Timeout);
  EXPECT_EQ(KindThrownBy([&] { transaction->Commit(); }), HostErrorKind::Timeout);
  EXPECT_LT(steady_clock::now() - begin, seconds(4));
  ::kill(backend, SIGCONT);
  server_.Signal(SIGCONT);
  Execute("INSERT INTO Prueba VALUES (4)");
  EXPECT_EQ(Count(), "1");
}

TEST_F(ServerFailures, ASlowStatementEndsAtItsLimitAndTheConnectionWorksOn) {
  const auto begin = steady_clock::now();
  EXPECT_EQ(KindThrownBy([&] { database_.OpenRecordset(SqlStatement("SELECT pg_sleep(20)")); }),
            HostErrorKind::Timeout);
  EXPECT_LT(steady_clock::now() - begin, seconds(3));
  Execute("INSERT INTO Prueba VALUES (1)");
  EXPECT_EQ(Count(), "1");
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
