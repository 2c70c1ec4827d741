// What is SQLite's own behind the contract that all providers share: the file, its locks, its room and its limits.
#include "database/sqlite/SqliteDatabaseServices.h"

#include <gtest/gtest.h>

#include <chrono>
#include <filesystem>
#include <fstream>

#include "contract/TemporaryFolder.h"
#include "database/sql/SqlScript.h"
#include "host/UserInterface.h"
#include "support/ChildProcess.h"
#include "support/FakeHost.h"
#include "support/ThrownBy.h"

namespace tolvan::test {
namespace {

using std::chrono::milliseconds;
using std::chrono::steady_clock;

constexpr const char* endless =
    "WITH RECURSIVE N(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM N) SELECT count(*) FROM N";

class SqliteDatabaseServicesTest : public ::testing::Test {
 protected:
  SqliteOptions Options(bool create = true) const {
    return {.path = folder_.File("tienda.db"), .busyWait = milliseconds(60), .createIfMissing = create};
  }

  static std::string OneText(DatabaseServices& database, const std::string& query) {
    return std::string(database.OpenRecordset(SqlStatement(query))->Text(0));
  }

  static void Run(DatabaseServices& database, const std::string& text) { database.Execute(SqlStatement(text)); }

  TemporaryFolder folder_;
};

class CountingInterruption final : public Interruption {
 public:
  explicit CountingInterruption(int quietQuestions) : left_(quietQuestions) {}
  bool Requested() const noexcept override { return left_-- <= 0; }

 private:
  mutable int left_;
};

using Permissions = std::filesystem::perms;
constexpr Permissions readOnlyFile = Permissions::owner_read | Permissions::group_read | Permissions::others_read;
constexpr Permissions readOnlyFolder =
    readOnlyFile | Permissions::owner_exec | Permissions::group_exec | Permissions::others_exec;

TEST_F(SqliteDatabaseServicesTest, OpeningTellsWhatIsWrongWithTheFile) {
  std::filesystem::create_directory(folder_.Path() / "carpeta");
  std::ofstream(folder_.File("texto.db")) << "esto no es una base de datos, sino una carta bastante larga";
  for (const char* name : {"cortada.db", "secreta.db"}) {
    SqliteDatabaseServices database({.path = folder_.File(name), .createIfMissing = true});
    Run(database, "CREATE TABLE T (A)");
  }
  std::fstream(folder_.File("cortada.db"), std::ios::in | std::ios::out | std::ios::binary).write("\0\0\0\0", 4);
  std::filesystem::permissions(folder_.File("secreta.db"), Permissions::none);

  const std::vector<std::pair<std::string, HostErrorKind>> cases{
      {"falta.db", HostErrorKind::Unreachable}, {"sin/camino/falta.db", HostErrorKind::Unreachable},
      {"carpeta", HostErrorKind::Unreachable},  {"texto.db", HostErrorKind::Damaged},
      {"cortada.db", HostErrorKind::Damaged},   {"secreta.db", HostErrorKind::Access},
  };
  for (const auto& [name, kind] : cases) {
    const std::string path = folder_.File(name);
    EXPECT_EQ(RunWithoutPrivileges([&, wanted = kind]() -> std::string {
                const HostError error = ThrownBy([&] { SqliteDatabaseServices database({.path = path}); });
                return error.Kind() == wanted && error.Context() == path ? "" : error.what();
              }),
              "")
        << name;
  }
  EXPECT_FALSE(std::filesystem::exists(folder_.File("falta.db")));
}

TEST_F(SqliteDatabaseServicesTest, AFolderThatCannotBeWrittenIsStillRead) {
  {
    SqliteDatabaseServices database(Options());
    Run(database, "CREATE TABLE T (A TEXT)");
    Run(database, "INSERT INTO T VALUES ('ñ')");
  }
  std::filesystem::permissions(Options().path, readOnlyFile);
  std::filesystem::permissions(folder_.Path(), readOnlyFolder);
  EXPECT_EQ(RunWithoutPrivileges([&]() -> std::string {
              SqliteDatabaseServices database(Options(false));
              const bool refused =
                  KindThrownBy([&] { Run(database, "INSERT INTO T VALUES ('o')"); }) == HostErrorKind::Access;
              return OneText(database, "SELECT A FROM T") + (refused ? "" : " and something was written");
            }),
            "ñ");
  std::filesystem::permissions(folder_.Path(), Permissions::owner_all);
}

TEST_F(SqliteDatabaseServicesTest, CommitsAreLoggedAheadAndSynced) {
  SqliteDatabaseServices database(Options());
  EXPECT_EQ(OneText(database, "PRAGMA journal_mode"), "delete") << "reading leaves the file as it is";
  database.BeginTransaction();
  EXPECT_EQ(OneText(database, "PRAGMA journal_mode"), "wal");
  EXPECT_EQ(OneText(database, "PRAGMA synchronous"), "2");
  EXPECT_EQ(OneText(database, "PRAGMA foreign_keys"), "1");
}

TEST_F(SqliteDatabaseServicesTest, AnotherProgramsLockIsWaitedForOnlySoLong) {
  SqliteDatabaseServices first(Options());
  SqliteDatabaseServices second(Options());
  Run(first, "CREATE TABLE T (A)");
  const auto writing = first.BeginTransaction();
  const auto start = steady_clock::now();
  EXPECT_EQ(KindThrownBy([&] { second.BeginTransaction(); }), HostErrorKind::Busy);
  const HostError busy = ThrownBy([&] { Run(second, "INSERT INTO T VALUES (1)"); });
  EXPECT_EQ(
      TextForPeople(busy).find("Ocupado por otro programa: otro programa está usando la base de datos (código 5)"), 0U);
  EXPECT_EQ(busy.Context(), Options().path + "\r\nINSERT INTO T VALUES (1)");
  EXPECT_GE(steady_clock::now() - start, milliseconds(2 * 60));
  EXPECT_EQ(OneText(second, "SELECT count(*) FROM T"), "0");  // readers do not wait
  writing->Commit();
  Run(second, "INSERT INTO T VALUES (1)");
}

TEST_F(SqliteDatabaseServicesTest, AFileLockedAsAWholeIsBusyFromTheStart) {
  SqliteDatabaseServices owner(Options());
  Run(owner, "PRAGMA journal_mode=DELETE");
  Run(owner, "PRAGMA locking_mode=EXCLUSIVE");
  Run(owner, "CREATE TABLE T (A)");
  EXPECT_EQ(KindThrownBy([&] { SqliteDatabaseServices late(Options()); }), HostErrorKind::Busy);
}

TEST_F(SqliteDatabaseServicesTest, TheUserStopsAStatementAndAWait) {
  const CountingInterruption afterAWhile(3);
  SqliteOptions options = Options();
  options.interruption = &afterAWhile;
  SqliteDatabaseServices database(options);
  EXPECT_EQ(KindThrownBy([&] { database.OpenRecordset(SqlStatement(endless)); }), HostErrorKind::Interrupted);

  const ImpatientUser impatient;
  options.interruption = &impatient;
  options.busyWait = std::chrono::minutes(10);
  SqliteDatabaseServices waiting(options);
  const auto writing = database.BeginTransaction();
  EXPECT_EQ(KindThrownBy([&] { waiting.BeginTransaction(); }), HostErrorKind::Interrupted);
  EXPECT_EQ(impatient.told, "Otro programa está usando la base de datos; esperando… Ya.");
}

TEST_F(SqliteDatabaseServicesTest, AStatementPastItsLimitEndsTheTransactionToo) {
  SqliteOptions options = Options();
  options.statementLimit = milliseconds(50);
  SqliteDatabaseServices database(options);
  Run(database, "CREATE TABLE T (A)");
  const auto transaction = database.BeginTransaction();
  Run(database, "INSERT INTO T VALUES (1)");
  const std::string endlessInsert =
      "INSERT INTO T WITH RECURSIVE N(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM N) SELECT i FROM N WHERE i < 0";
  EXPECT_EQ(KindThrownBy([&] { Run(database, endlessInsert); }), HostErrorKind::Timeout);
  // SQLite has rolled back by itself now; a statement let through would be kept at once, outside any transaction.
  EXPECT_EQ(KindThrownBy([&] { Run(database, "INSERT INTO T VALUES (2)"); }), HostErrorKind::Timeout);
  EXPECT_EQ(KindThrownBy([&] { transaction->Commit(); }), HostErrorKind::Timeout);
  EXPECT_EQ(OneText(database, "SELECT count(*) FROM T"), "0");
}

TEST_F(SqliteDatabaseServicesTest, AFullDiskUndoesTheTransaction) {
  SqliteDatabaseServices database(Options());
  Run(database, "CREATE TABLE T (A)");
  Run(database, "INSERT INTO T VALUES ('antes')");
  Run(database, "PRAGMA max_page_count=20");
  {
    const auto transaction = database.BeginTransaction();
    const auto fill = [&] {
      for (int row = 0; row < 1'000; ++row) Run(database, "INSERT INTO T VALUES (randomblob(1000))");
    };
    EXPECT_EQ(KindThrownBy(fill), HostErrorKind::Full);
    EXPECT_EQ(KindThrownBy([&] { transaction->Commit(); }), HostErrorKind::Full);
  }
  EXPECT_EQ(OneText(database, "SELECT count(*) FROM T"), "1");
  Run(database, "PRAGMA max_page_count=1000000");
  Run(database, "INSERT INTO T VALUES ('después')");
}

TEST_F(SqliteDatabaseServicesTest, ACommitThatFailsLeavesNothingAndNoTransaction) {
  SqliteDatabaseServices database(Options());
  RunSqlScript(database, R"(
      CREATE TABLE P (A INTEGER PRIMARY KEY);
      CREATE TABLE H (A INTEGER REFERENCES P (A) DEFERRABLE INITIALLY DEFERRED);)");
  {
    const auto transaction = database.BeginTransaction();
    Run(database, "INSERT INTO H VALUES (7)");  // refused at the commit only
    EXPECT_EQ(KindThrownBy([&] { transaction->Commit(); }), HostErrorKind::Constraint);
    EXPECT_EQ(OneText(database, "SELECT count(*) FROM H"), "0");
  }
  database.BeginTransaction()->Commit();
}

TEST_F(SqliteDatabaseServicesTest, AFileThatIsNoLongerInItsPlaceTakesNothing) {
  SqliteDatabaseServices database(Options());
  Run(database, "CREATE TABLE T (A)");
  const std::string place = folder_.File("tienda.db");
  const auto transaction = database.BeginTransaction();
  Run(database, "INSERT INTO T VALUES (1)");
  std::filesystem::rename(place, place + ".lejos");
  EXPECT_EQ(KindThrownBy([&] { transaction->Commit(); }), HostErrorKind::Unreachable);
  EXPECT_EQ(KindThrownBy([&] { Run(database, "INSERT INTO T VALUES (2)"); }), HostErrorKind::Unreachable);
  EXPECT_EQ(KindThrownBy([&] { database.BeginTransaction(); }), HostErrorKind::Unreachable);
  EXPECT_EQ(KindThrownBy([&] { OneText(database, "SELECT count(*) FROM T"); }), HostErrorKind::Unreachable);
  std::filesystem::copy_file(place + ".lejos", place);
  EXPECT_EQ(KindThrownBy([&] { Run(database, "INSERT INTO T VALUES (3)"); }), HostErrorKind::Unreachable)
      << "another file in its place";
  std::filesystem::rename(place + ".lejos", place);
  EXPECT_EQ(OneText(database, "SELECT count(*) FROM T"), "0");
}

TEST_F(SqliteDatabaseServicesTest, OnlyOneStatementAtATimeAndAValueForEachMark) {
  SqliteDatabaseServices database(Options());
  Run(database, "CREATE TABLE T (A)");
  for (const char* text : {"", " ; ", "DELETE FROM T; DROP TABLE T", "SELECT ? FROM T"}) {
    EXPECT_EQ(KindThrownBy([&] { Run(database, text); }), HostErrorKind::Statement) << text;
  }
  EXPECT_EQ(OneText(database, "SELECT count(*) FROM T; -- fin\n ; "), "0");
}

TEST_F(SqliteDatabaseServicesTest, ValuesFollowTheDeclaredTypeAlsoThroughAView) {
  SqliteDatabaseServices database(Options());
  RunSqlScript(database, R"(
      CREATE TABLE T (B BOOLEAN, D DATETIME, N NUMERIC, X TEXT);
      CREATE VIEW V AS SELECT T.B, T.D, T.N, T.X, T.B + 0 AS Suma FROM T;
      INSERT INTO T VALUES (1, '2024-01-31', 10.5, '1'), (0, 'ayer; nunca', 3, NULL);)");
  const auto rows = database.OpenRecordset(SqlStatement("SELECT * FROM V"));
  EXPECT_EQ(rows->Value("B"), FieldValue(true));
  EXPECT_EQ(rows->Text(0), "True");
  EXPECT_EQ(rows->Text(1), "2024-01-31 00:00:00");
  EXPECT_EQ(rows->Value("N"), FieldValue(10.5));
  EXPECT_EQ(rows->Value("X"), FieldValue("1"));
  EXPECT_EQ(rows->Value("Suma"), FieldValue(std::int64_t{1}));  // an expression has no declared type
  rows->MoveNext();
  EXPECT_EQ(rows->Text(0), "False");
  EXPECT_EQ(rows->Value("D"), FieldValue("ayer; nunca"));
  EXPECT_EQ(rows->Value("N"), FieldValue(std::int64_t{3}));
}

TEST_F(SqliteDatabaseServicesTest, ACachedStatementFollowsAChangeOfItsTable) {
  SqliteDatabaseServices database(Options());
  Run(database, "CREATE TABLE T (A TEXT)");
  Run(database, "INSERT INTO T VALUES ('a')");
  EXPECT_EQ(database.OpenRecordset(SqlStatement("SELECT * FROM T"))->FieldCount(), 1U);
  Run(database, "ALTER TABLE T ADD COLUMN B BOOLEAN DEFAULT 1");
  const auto row = database.OpenRecordset(SqlStatement("SELECT * FROM T"));
  ASSERT_EQ(row->FieldCount(), 2U);
  EXPECT_EQ(row->Value("B"), FieldValue(true));
}

TEST_F(SqliteDatabaseServicesTest, MoreTextsThanTheCacheHoldsStillRun) {
  SqliteDatabaseServices database(Options());
  const auto held = database.OpenRecordset(SqlStatement("SELECT 'primero'"));
  for (int number = 0; number < 250; ++number) {
    EXPECT_EQ(OneText(database, "SELECT " + std::to_string(number % 130)), std::to_string(number % 130));
  }
  EXPECT_EQ(held->Text(0), "primero");
}

TEST_F(SqliteDatabaseServicesTest, AWalkGivenUpLeavesNoLock) {
  SqliteDatabaseServices reader(Options());
  Run(reader, "CREATE TABLE T (A)");
  Run(reader, "INSERT INTO T VALUES (1), (2)");
  ASSERT_FALSE(reader.OpenRecordset(SqlStatement("SELECT A FROM T"))->AtEnd());
  SqliteDatabaseServices other(Options());
  Run(other, "INSERT INTO T VALUES (3)");
  Run(reader, "INSERT INTO T VALUES (4)");  // from a read that still stood on the old state this would be Busy
  EXPECT_EQ(OneText(other, "SELECT count(*) FROM T"), "4");
}

}  // namespace
}  // namespace tolvan::test
