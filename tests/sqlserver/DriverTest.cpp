// The ODBC provider over the driver that Debian has for SQL Server (FreeTDS), against a server process that speaks the
// protocol and answers what a test says: values, counts, errors wherever they may come, waiting, and cut connections.
#include <gmock/gmock.h>

#include <chrono>

#include "contract/TemporaryFolder.h"
#include "database/sql/SqlDialects.h"
#include "host/HostError.h"
#include "store/ConfiguredHostFactory.h"
#include "support/FakeHost.h"
#include "support/FileContent.h"
#include "support/LoopbackServer.h"
#include "support/RegistryRun.h"
#include "support/ThrownBy.h"

namespace tolvan::test {
namespace {

using std::chrono::steady_clock;
using testing::EndsWith;
using testing::HasSubstr;

class SqlServerDriver : public testing::Test {
 protected:
  SqlServerDriver() {
    WriteFile(folder_.File("tolvan.ini"),
              "[host]\najustes = datos\n[base_de_datos]\nmotor = sqlserver\nespera = 4\n"
              "conexion = Driver=FreeTDS;Server=127.0.0.1;Port=" +
                  std::to_string(server_.Port()) + ";TDS_Version=7.4;UID=tienda;PWD=clave;Database=tienda\n");
    ConfiguredHostFactory factory(OpenHostConfiguration(folder_.File("tolvan.ini")),
                                  {dialogs_, clock_, interruption_, false});
    services_ = factory.CreateAppServices();
    context_ = factory.CreateHostContext(*services_);
  }

  DatabaseServices& Database() { return context_->Application().Database(); }

  /// What the server answers from now on.
  void Answer(const std::string& json) { WriteFile(folder_.File("answers.json"), json); }

  std::string Requests() { return ReadFile(folder_.File("requests")); }

  HostErrorKind KindOf(const std::string& text) {
    return KindThrownBy([&] { Database().Execute(SqlStatement(text)); });
  }

  static std::string Name(HostErrorKind kind) {
    if (kind == HostErrorKind::Constraint) return "refused";
    return kind == HostErrorKind::Unreachable ? "lost" : "another kind of error";
  }

  /// What came of each statement: its count, the fields of its rows or the kind of its error.
  std::string Outcomes(const std::vector<SqlStatement>& batch) {
    std::string outcomes;
    for (const BatchResult& result : Database().RunBatch(batch)) {
      if (result.affectedRows) outcomes += std::to_string(*result.affectedRows);
      if (result.error) outcomes += Name(result.error->Kind());
      for (; result.rows && !result.rows->AtEnd(); result.rows->MoveNext()) outcomes.append(result.rows->Text(0));
      outcomes += ' ';
    }
    return outcomes;
  }

  TemporaryFolder folder_;
  LoopbackServer server_{"tds_server.py", {folder_.Path()}};
  FakeDialogs dialogs_;
  FakeClock clock_;
  FakeInterruption interruption_;
  std::unique_ptr<AppServices> services_;
  std::unique_ptr<HostContext> context_;
};

TEST_F(SqlServerDriver, ReadsEveryTypeOfTheSchema) {
  const std::string longText = std::string(9000, 'x') + "ñ";
  Answer(R"json({"SELECT": [{"columns": [["T", "nvarchar"], ["L", "nvarchar_max"], ["I", "int"], ["B", "bigint"],
    ["S", "bit"], ["F", "float"], ["D", "decimal"], ["M", "money"], ["H", "datetime"]], "rows": [
    ["Peñón ☕😀", ")json" +
         longText + R"json(", -7, 9007199254740993, 1, 0.1, "12345678901234.5678", "-0.0500",
     "2024-02-29T23:59:59"],
    ["", "", 0, 0, 0, 0, "-922337203685477.5808", "922337203685477.5807", "1753-01-01T00:00:00"],
    [null, null, null, null, null, null, null, null, null]]}]})json");
  const std::vector<std::vector<FieldValue>> expected{
      {"Peñón ☕😀", longText, std::int64_t{-7}, std::int64_t{9007199254740993}, true, 0.1,
       DecimalText{"12345678901234.5678"}, DecimalText{"-0.0500"}, *DateTime::Parse("2024-02-29 23:59:59")},
      {"", "", std::int64_t{0}, std::int64_t{0}, false, 0.0, DecimalText{"-922337203685477.5808"},
       DecimalText{"922337203685477.5807"}, *DateTime::Parse("1753-01-01 00:00:00")},
      std::vector<FieldValue>(9)};
  const auto rows = Database().OpenRecordset(SqlStatement("SELECT * FROM Prueba"));
  EXPECT_EQ(rows->FindField("h"), 8U);
  for (const std::vector<FieldValue>& row : expected) {
    ASSERT_FALSE(rows->AtEnd());
    for (std::size_t field = 0; field < row.size(); ++field) EXPECT_EQ(rows->Value(field), row[field]) << field;
    rows->MoveNext();
  }
  EXPECT_TRUE(rows->AtEnd());
}

TEST_F(SqlServerDriver, CountsTheRowsOfAStatementAndSendsItsTextWhole) {
  Answer(R"json({"UPDATE": [{"count": 3}], "CREATE": [{"none": true}], "IF NOT": [{"none": true}]})json");
  SqlStatement update("UPDATE Items SET Descripcion = ");
  EXPECT_EQ(Database().Execute(update.Text("Ñandú d'agua ? ☕")), 3);
  EXPECT_EQ(Database().Execute(SqlStatement("CREATE TABLE T (a INTEGER)")), 0);
  EXPECT_EQ(Database().Execute(SqlStatement("IF NOT EXISTS (SELECT 1) INSERT INTO T (a) VALUES (1)")), 0);
  EXPECT_THAT(Requests(), HasSubstr("Ñandú d'"));
  EXPECT_THAT(Requests(), HasSubstr("agua ? ☕"));
}

TEST_F(SqlServerDriver, AnErrorIsSeenWhereverItComes) {
  Answer(R"json({"UPDATE uno": [{"count": 1}, {"error": [2627, 14, "Violation of PRIMARY KEY constraint"]}],
    "SELECT dos": [{"columns": [["a", "int"]], "rows": [[1], [2]]}, {"error": [8134, 16, "Divide by zero"]}],
    "SELECT tres": [{"columns": [["a", "int"]], "rows": [[1], [2]], "broken": [8134, 16, "Divide by zero"]}],
    "SELECT bien": [{"columns": [["a", "int"]], "rows": [[1], [2]]}]})json");
  EXPECT_EQ(KindOf("UPDATE uno"), HostErrorKind::Constraint);
  for (const char* text : {"SELECT dos", "SELECT tres"}) {
    EXPECT_EQ(KindThrownBy([&] {
                const auto opened = Database().OpenRecordset(SqlStatement(text));
                while (!opened->AtEnd()) opened->MoveNext();
              }),
              HostErrorKind::Statement)
        << "two rows must not pass for all of them: " << text;
  }
  EXPECT_EQ(IntegerOf(Database().OpenRecordset(SqlStatement("SELECT bien"))->Value(0)), 1) << "and it works on";
}

TEST_F(SqlServerDriver, TellsTheKindsOfErrorsByTheServersNumbers) {
  const struct {
    int number;
    HostErrorKind kind;
    bool explained;  // or said in the server's own words
  } cases[] = {{2627, HostErrorKind::Constraint, true}, {2601, HostErrorKind::Constraint, true},
               {547, HostErrorKind::Constraint, false}, {515, HostErrorKind::Constraint, true},
               {208, HostErrorKind::Statement, false},  {229, HostErrorKind::Access, false},
               {1205, HostErrorKind::Busy, true},       {1222, HostErrorKind::Busy, true},
               {1105, HostErrorKind::Full, true},       {9002, HostErrorKind::Full, true}};
  for (const auto& [number, kind, explained] : cases) {
    Answer(R"json({"UPDATE": [{"error": [)json" + std::to_string(number) +
           R"json(, 16, "dicho por el servidor"]}]})json");
    const HostError error = ThrownBy([&] { Database().Execute(SqlStatement("UPDATE T SET a = 1")); });
    EXPECT_EQ(error.Kind(), kind) << number;
    EXPECT_EQ(error.NativeCode(), number);
    EXPECT_THAT(TextForPeople(error), HasSubstr("código " + std::to_string(number)));
    EXPECT_NE(TextForPeople(error).find("dicho por el servidor") != std::string::npos, explained) << number;
  }
}

TEST_F(SqlServerDriver, AStatementThatTakesTooLongIsStoppedAndTheConnectionWorksOn) {
  Answer(R"json({"UPDATE lento": [{"wait": true}], "UPDATE rápido": [{"count": 1}]})json");
  const auto begin = steady_clock::now();
  EXPECT_EQ(KindOf("UPDATE lento"), HostErrorKind::Timeout);
  EXPECT_THAT(steady_clock::now() - begin,
              testing::AllOf(testing::Gt(std::chrono::seconds(3)), testing::Lt(std::chrono::seconds(15))));
  EXPECT_THAT(Requests(), HasSubstr("attention"));
  EXPECT_EQ(Database().Execute(SqlStatement("UPDATE rápido")), 1);
}

TEST_F(SqlServerDriver, TransactionsReachTheServer) {
  const std::string fine = R"json("UPDATE": [{"count": 1}])json";
  const auto run = [&](bool commit) {
    const auto transaction = Database().BeginTransaction();
    Database().Execute(SqlStatement("UPDATE T SET a = 1"));
    if (commit) transaction->Commit();
  };
  Answer("{" + fine + "}");
  run(true);
  run(false);
  // This driver begins the next transaction with each end of one, and rolls that back when the last has ended.
  EXPECT_EQ(Requests(),
            "begin\nbatch UPDATE T SET a = 1\ncommit and begin\nrollback\n"
            "begin\nbatch UPDATE T SET a = 1\nrollback and begin\nrollback\n");
  Answer("{" + fine + R"json(, "commit": [{"error": [1105, 17, "Could not allocate space"]}]})json");
  EXPECT_EQ(KindThrownBy([&] { run(true); }), HostErrorKind::Full);
  EXPECT_THAT(Requests(), EndsWith("commit and begin\nrollback and begin\n")) << "what was not kept is undone";
  Answer("{" + fine + R"json(, "commit": [{"cut": true}]})json");
  EXPECT_EQ(KindThrownBy([&] { run(true); }), HostErrorKind::OutcomeUnknown);
  EXPECT_EQ(Database().Execute(SqlStatement("UPDATE T SET a = 1")), 1) << "on a new connection";
}

TEST_F(SqlServerDriver, ABatchHasAResultForEachStatement) {
  Answer(R"json({"INSERT INTO T (a) VALUES (1)": [{"count": 1}],
    "INSERT INTO T (a) VALUES (2)": [{"error": [2627, 14, "Violation of PRIMARY KEY constraint"]}],
    "SELECT a FROM T": [{"columns": [["a", "int"]], "rows": [[1], [5]]}],
    "DELETE FROM T": [{"count": 2}], "UPDATE corte": [{"cut": true}]})json");
  std::vector<SqlStatement> batch;
  for (const char* text :
       {"INSERT INTO T (a) VALUES (1)", "INSERT INTO T (a) VALUES (2)", "SELECT a FROM T", "DELETE FROM T"}) {
    batch.emplace_back(text);
  }
  EXPECT_EQ(Outcomes(batch), "1 refused 15 2 ");
  {
    const auto transaction = Database().BeginTransaction();
    EXPECT_EQ(Outcomes(batch), "1 refused refused refused ");
    EXPECT_EQ(KindThrownBy([&] { transaction->Commit(); }), HostErrorKind::Constraint);
  }
  batch.insert(batch.begin() + 1, SqlStatement("UPDATE corte"));
  EXPECT_EQ(Outcomes(batch), "lost lost lost lost lost ");
}

TEST_F(SqlServerDriver, TheRegistryTakesFewRoundTripsAndKnowsWhichLineIsNew) {
  constexpr int customers = 5'000;
  Answer(R"json({"IF NOT EXISTS": [{"count": 1}],
    "IF NOT EXISTS (SELECT * FROM Clientes WHERE idCliente = '101012341')": [{"none": true}]})json");
  const RegistryRun run =
      ImportRegistry(Database(), SqlServerDialect(), "101012341|CONOCIDA\r\n" + MakeRegistry(customers));
  ASSERT_TRUE(run.finished) << run.message;
  EXPECT_EQ(run.counts.newCustomers, customers);
  EXPECT_EQ(run.counts.notRegistered, 1) << "it was the first line";
  const std::string requests = Requests();
  EXPECT_LE(std::ranges::count(requests, '\n'), customers / 500);
  EXPECT_THAT(requests, HasSubstr("INSERT INTO CLIENTES"));
}

TEST_F(SqlServerDriver, WhoCannotConnectIsToldWhy) {
  Answer(R"json({"login": [{"error": [18456, 14, "Login failed"]}]})json");
  EXPECT_EQ(KindThrownBy([&] { Database(); }), HostErrorKind::Access);
  Answer(R"json({"login": [{"error": [4060, 11, "Cannot open database"]}]})json");
  EXPECT_EQ(KindThrownBy([&] { Database(); }), HostErrorKind::Unreachable);
}

}  // namespace
}  // namespace tolvan::test
