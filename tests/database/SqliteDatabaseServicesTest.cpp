// What is SQLite's own beyond the contract that all providers share: the file, its locks, its room, its limits and how
// its failures are told.
#include "database/sqlite/SqliteDatabaseServices.h"

#include <gmock/gmock.h>
#include <linux/filter.h>
#include <linux/seccomp.h>
#include <sqlite3.h>
#include <sys/prctl.h>
#include <sys/syscall.h>

#include <cerrno>
#include <chrono>
#include <filesystem>
#include <fstream>

#include "contract/TemporaryFolder.h"
#include "database/sql/SqlScript.h"
#include "database/sqlite/SqliteConnection.h"
#include "host/UserInterface.h"
#include "support/ChildProcess.h"
#include "support/FakeHost.h"
#include "support/ThrownBy.h"

namespace tolvan::test {
namespace {

using std::chrono::milliseconds;
using std::chrono::steady_clock;
using testing::StartsWith;

const std::string numbers = "WITH RECURSIVE N(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM N) ";

/// A file with the table T, and a connection to it.
class SqliteDatabaseServicesTest : public ::testing::Test {
 protected:
  SqliteDatabaseServicesTest() { Run("CREATE TABLE T (A)"); }

  static std::string OneText(DatabaseServices& database, const std::string& query) {
    return std::string(database.OpenRecordset(SqlStatement(query))->Text(0));
  }
  std::string OneText(const std::string& query) { return OneText(database_, query); }

  static void Run(DatabaseServices& database, const std::string& text) { database.Execute(SqlStatement(text)); }
  void Run(const std::string& text) { Run(database_, text); }
  HostErrorKind KindOf(const std::string& text) {
    return KindThrownBy([&] { Run(text); });
  }

  TemporaryFolder folder_;
  const std::string path_ = folder_.File("tienda.db");
  const SqliteOptions options_{.path = path_, .busyWait = milliseconds(60), .createIfMissing = true};
  SqliteDatabaseServices database_{options_};
};

/// As soon as a wait is told, `endWait` brings about its end.
struct HelpfulUser final : Interruption {
  bool Requested() const noexcept override {
    ++(waits ? questionsInWait : otherQuestions);
    return false;
  }
  void WaitBegins(std::string_view) const noexcept override {
    waits = true;
    endWait();
  }
  void WaitEnds() const noexcept override { waits = false; }
  std::function<void()> endWait;
  mutable bool waits = false;
  mutable int questionsInWait = 0;
  mutable int otherQuestions = 0;
};

/// In a child: no page of a database can be read any more, as on a failing disk.
void RefuseReads() {
  sock_filter rules[] = {BPF_STMT(BPF_LD | BPF_W | BPF_ABS, offsetof(seccomp_data, nr)),
                         BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, SYS_pread64, 0, 1),
                         BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_ERRNO | EIO),
                         BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_ALLOW)};
  const sock_fprog program{std::size(rules), rules};
  ASSERT_EQ(::prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0), 0);
  ASSERT_EQ(::prctl(PR_SET_SECCOMP, SECCOMP_MODE_FILTER, &program), 0);
}

using Permissions = std::filesystem::perms;
constexpr Permissions readOnlyFile = Permissions::owner_read | Permissions::group_read | Permissions::others_read;
constexpr Permissions readOnlyFolder =
    readOnlyFile | Permissions::owner_exec | Permissions::group_exec | Permissions::others_exec;

TEST_F(SqliteDatabaseServicesTest, OpeningTellsWhatIsWrongWithTheFile) {
  std::filesystem::create_directory(folder_.Path() / "carpeta");
  std::ofstream(folder_.File("texto.db")) << "esto no es una base de datos, sino una carta bastante larga";
  for (const char* name : {"cortada.db", "secreta.db"}) std::filesystem::copy_file(path_, folder_.File(name));
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
  const TemporaryFolder closed;
  const std::string path = closed.File("tienda.db");
  Run("INSERT INTO T VALUES ('ñ')");
  database_.BeginTransaction();  // which makes the log the file's own way
  Run("PRAGMA wal_checkpoint(TRUNCATE)");
  std::filesystem::copy_file(path_, path);
  std::filesystem::permissions(path, readOnlyFile);
  std::filesystem::permissions(closed.Path(), readOnlyFolder);
  EXPECT_EQ(RunWithoutPrivileges([&]() -> std::string {
              SqliteDatabaseServices database({.path = path});
              const bool refused =
                  KindThrownBy([&] { Run(database, "INSERT INTO T VALUES ('o')"); }) == HostErrorKind::Access;
              return OneText(database, "SELECT A FROM T") + (refused ? "" : " and something was written");
            }),
            "ñ");
  std::filesystem::permissions(closed.Path(), Permissions::owner_all);
}

TEST_F(SqliteDatabaseServicesTest, CommitsAreLoggedAheadAndSynced) {
  EXPECT_EQ(OneText("PRAGMA journal_mode"), "delete") << "reading leaves the file as it is";
  database_.BeginTransaction();
  EXPECT_EQ(OneText("PRAGMA journal_mode"), "wal");
  EXPECT_EQ(OneText("PRAGMA synchronous"), "2");
  EXPECT_EQ(OneText("PRAGMA foreign_keys"), "1");
}

TEST_F(SqliteDatabaseServicesTest, AnotherProgramsLockIsWaitedForOnlySoLong) {
  SqliteDatabaseServices second(options_);
  const auto writing = database_.BeginTransaction();
  const auto start = steady_clock::now();
  EXPECT_EQ(KindThrownBy([&] { second.BeginTransaction(); }), HostErrorKind::Busy);
  const HostError busy = ThrownBy([&] { Run(second, "INSERT INTO T VALUES (1)"); });
  EXPECT_THAT(TextForPeople(busy),
              StartsWith("Ocupado por otro programa: otro programa está usando la base de datos (código 5)"));
  EXPECT_EQ(busy.Context(), path_ + "\r\nINSERT INTO T VALUES (1)");
  EXPECT_GE(steady_clock::now() - start, milliseconds(2 * 60));
  EXPECT_EQ(OneText(second, "SELECT count(*) FROM T"), "0");  // readers do not wait
  writing->Commit();
  Run(second, "INSERT INTO T VALUES (1)");
}

TEST_F(SqliteDatabaseServicesTest, AFileLockedAsAWholeIsBusyFromTheStart) {
  Run("PRAGMA locking_mode=EXCLUSIVE");
  Run("INSERT INTO T VALUES (1)");
  EXPECT_EQ(KindThrownBy([&] { SqliteDatabaseServices late(options_); }), HostErrorKind::Busy);
}

TEST_F(SqliteDatabaseServicesTest, TheUserStopsAStatementAndAWait) {
  FakeInterruption afterAWhile;
  afterAWhile.questions = 4;
  SqliteOptions options = options_;
  options.interruption = &afterAWhile;
  SqliteDatabaseServices working(options);
  EXPECT_EQ(KindThrownBy([&] { OneText(working, numbers + "SELECT count(*) FROM N"); }), HostErrorKind::Interrupted);

  const ImpatientUser impatient;
  options.interruption = &impatient;
  options.busyWait = std::chrono::minutes(10);
  SqliteDatabaseServices waiting(options);
  const auto writing = database_.BeginTransaction();
  EXPECT_EQ(KindThrownBy([&] { waiting.BeginTransaction(); }), HostErrorKind::Interrupted);
  EXPECT_EQ(impatient.told, "Otro programa está usando la base de datos; esperando… Ya.");
}

TEST_F(SqliteDatabaseServicesTest, AWaitIsToldOnlyUntilTheStatementWorks) {
  std::unique_ptr<Transaction> writing = database_.BeginTransaction();
  HelpfulUser user;
  user.endWait = [&] { writing.reset(); };
  SqliteOptions options = options_;
  options.busyWait = std::chrono::minutes(10);
  options.interruption = &user;
  SqliteDatabaseServices waiting(options);
  Run(waiting, "INSERT INTO T " + numbers + "SELECT i FROM N LIMIT 200000");
  EXPECT_FALSE(writing) << "the wait was told";
  EXPECT_GT(user.otherQuestions, 500) << "and then it worked for long";
  EXPECT_LT(user.questionsInWait, 100);
}

TEST_F(SqliteDatabaseServicesTest, AStatementPastItsLimitEndsTheTransactionToo) {
  SqliteOptions options = options_;
  options.statementLimit = milliseconds(50);
  SqliteDatabaseServices database(options);
  const auto transaction = database.BeginTransaction();
  Run(database, "INSERT INTO T VALUES (1)");
  // SQLite rolls back by itself then; a statement let through would be kept at once, outside any transaction.
  for (const std::string& text : {numbers + "SELECT i FROM N WHERE i < 0", std::string("VALUES (2)")}) {
    EXPECT_EQ(KindThrownBy([&] { Run(database, "INSERT INTO T " + text); }), HostErrorKind::Timeout) << text;
  }
  EXPECT_EQ(KindThrownBy([&] { transaction->Commit(); }), HostErrorKind::Timeout);
  EXPECT_EQ(OneText(database, "SELECT count(*) FROM T"), "0");
}

TEST_F(SqliteDatabaseServicesTest, AFullDiskUndoesTheTransaction) {
  Run("INSERT INTO T VALUES ('antes')");
  Run("PRAGMA max_page_count=20");
  {
    const auto transaction = database_.BeginTransaction();
    EXPECT_EQ(KindOf("INSERT INTO T " + numbers + "SELECT randomblob(1000) FROM N LIMIT 1000"), HostErrorKind::Full);
    EXPECT_EQ(KindThrownBy([&] { transaction->Commit(); }), HostErrorKind::Full);
  }
  EXPECT_EQ(OneText("SELECT count(*) FROM T"), "1");
  Run("PRAGMA max_page_count=1000000");
  Run("INSERT INTO T VALUES ('después')");
}

TEST_F(SqliteDatabaseServicesTest, ACommitThatFailsLeavesNothingAndNoTransaction) {
  RunSqlScript(database_, R"(
      CREATE TABLE P (A INTEGER PRIMARY KEY);
      CREATE TABLE H (A INTEGER REFERENCES P (A) DEFERRABLE INITIALLY DEFERRED);)");
  {
    const auto transaction = database_.BeginTransaction();
    Run("INSERT INTO H VALUES (7)");  // refused at the commit only
    EXPECT_EQ(KindThrownBy([&] { transaction->Commit(); }), HostErrorKind::Constraint);
    EXPECT_EQ(OneText("SELECT count(*) FROM H"), "0");
  }
  database_.BeginTransaction()->Commit();
}

TEST_F(SqliteDatabaseServicesTest, AFileThatIsNoLongerInItsPlaceTakesNothing) {
  const auto transaction = database_.BeginTransaction();
  Run("INSERT INTO T VALUES (1)");
  std::filesystem::rename(path_, path_ + ".lejos");
  EXPECT_EQ(KindThrownBy([&] { transaction->Commit(); }), HostErrorKind::Unreachable);
  EXPECT_EQ(KindOf("INSERT INTO T VALUES (2)"), HostErrorKind::Unreachable);
  EXPECT_EQ(KindThrownBy([&] { database_.BeginTransaction(); }), HostErrorKind::Unreachable);
  EXPECT_EQ(KindThrownBy([&] { OneText("SELECT count(*) FROM T"); }), HostErrorKind::Unreachable);
  std::filesystem::copy_file(path_ + ".lejos", path_);
  EXPECT_EQ(KindOf("INSERT INTO T VALUES (3)"), HostErrorKind::Unreachable) << "another file in its place";
  std::filesystem::rename(path_ + ".lejos", path_);
  EXPECT_EQ(OneText("SELECT count(*) FROM T"), "0");
}

TEST_F(SqliteDatabaseServicesTest, OnlyOneStatementAtATimeAndAValueForEachMark) {
  for (const char* text : {"", " ; ", "DELETE FROM T; DROP TABLE T", "SELECT ? FROM T"}) {
    EXPECT_EQ(KindOf(text), HostErrorKind::Statement) << text;
  }
  EXPECT_EQ(OneText("SELECT count(*) FROM T; -- fin\n ; "), "0");
}

TEST_F(SqliteDatabaseServicesTest, ValuesFollowTheDeclaredTypeAlsoThroughAView) {
  RunSqlScript(database_, R"(
      CREATE TABLE U (B BOOLEAN, D DATETIME, N NUMERIC, X TEXT);
      CREATE VIEW V AS SELECT U.B, U.D, U.N, U.X, U.B + 0 AS Suma FROM U;
      INSERT INTO U VALUES (1, '2024-01-31', 10.5, '1'), (0, 'ayer; nunca', 3, NULL);)");
  const auto rows = database_.OpenRecordset(SqlStatement("SELECT * FROM V"));
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
  Run("INSERT INTO T VALUES ('a')");
  EXPECT_EQ(database_.OpenRecordset(SqlStatement("SELECT * FROM T"))->FieldCount(), 1U);
  Run("ALTER TABLE T ADD COLUMN B BOOLEAN DEFAULT 1");
  const auto row = database_.OpenRecordset(SqlStatement("SELECT * FROM T"));
  ASSERT_EQ(row->FieldCount(), 2U);
  EXPECT_EQ(row->Value("B"), FieldValue(true));
}

TEST_F(SqliteDatabaseServicesTest, MoreTextsThanTheCacheHoldsStillRun) {
  const auto held = database_.OpenRecordset(SqlStatement("SELECT 'primero'"));
  for (int number = 0; number < 250; ++number) {
    EXPECT_EQ(OneText("SELECT " + std::to_string(number % 130)), std::to_string(number % 130));
  }
  EXPECT_EQ(held->Text(0), "primero");
}

TEST_F(SqliteDatabaseServicesTest, AWalkGivenUpLeavesNoLock) {
  Run("INSERT INTO T VALUES (1), (2)");
  ASSERT_FALSE(database_.OpenRecordset(SqlStatement("SELECT A FROM T"))->AtEnd());
  SqliteDatabaseServices other(options_);
  Run(other, "INSERT INTO T VALUES (3)");
  Run("INSERT INTO T VALUES (4)");  // from a read that still stood on the old state this would be Busy
  EXPECT_EQ(OneText(other, "SELECT count(*) FROM T"), "4");
}

TEST_F(SqliteDatabaseServicesTest, TellsAPageThatCannotBeReadFromADamagedOne) {
  const auto failure = [&](const std::function<void()>& spoil) {
    return RunInChild([&]() -> std::string {
      SqliteDatabaseServices database(options_);
      spoil();
      return TextForPeople(ThrownBy([&] { OneText(database, "SELECT A FROM T"); }));
    });
  };
  EXPECT_THAT(failure(RefuseReads), StartsWith("No se puede acceder: no se pudo leer una página de la base de datos;"));
  const auto damage = [&] {
    std::fstream file(path_, std::ios::in | std::ios::out | std::ios::binary);
    file.seekp(4096).write("\xFF\xFF\xFF\xFF", 4);
  };
  EXPECT_THAT(failure(damage), StartsWith("El contenido está dañado: las páginas de la base de datos no concuerdan"));
}

TEST_F(SqliteDatabaseServicesTest, NamesTheColumnOfAConstraint) {
  Run("CREATE TABLE U (A UNIQUE)");
  Run("INSERT INTO U VALUES (7)");
  EXPECT_STREQ(ThrownBy([&] { Run("INSERT INTO U VALUES (7)"); }).what(), "ya hay un registro con esa clave (U.A)");
}

// The failures that no test can bring about on a sound machine.
TEST(SqliteErrorsTest, CodesOfFailingDisksAndFoldersHaveTheirKind) {
  const struct {
    int code, systemError;
    HostErrorKind kind;
  } cases[] = {
      {SQLITE_CANTOPEN, EROFS, HostErrorKind::Access},
      {SQLITE_CANTOPEN, ENOSPC, HostErrorKind::Full},
      {SQLITE_CANTOPEN, ENOENT, HostErrorKind::Unreachable},
      {SQLITE_IOERR_WRITE, ENOSPC, HostErrorKind::Full},
      {SQLITE_IOERR_WRITE, EDQUOT, HostErrorKind::Full},
      {SQLITE_IOERR_FSYNC, EIO, HostErrorKind::Unreachable},
      {SQLITE_IOERR_DATA, 0, HostErrorKind::Damaged},
      {SQLITE_IOERR_NOMEM, 0, HostErrorKind::Failed},
      {SQLITE_BUSY_SNAPSHOT, 0, HostErrorKind::Busy},
      {SQLITE_READONLY_DBMOVED, 0, HostErrorKind::Access},
      {SQLITE_NOMEM, 0, HostErrorKind::Failed},
  };
  for (const auto& [code, systemError, kind] : cases) EXPECT_EQ(KindOfSqliteCode(code, systemError), kind) << code;
}

}  // namespace
}  // namespace tolvan::test
