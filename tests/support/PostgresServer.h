// A PostgreSQL server of the tests' own: a private folder, a Unix socket in it and no network port, run by a user who
// is not root. The cluster that the machine may run for others is never touched. A session that sets synchronous_commit
// to "on" waits in its commit without end, after it was kept: for a standby that there is not.
#pragma once

#include <sys/types.h>

#include <filesystem>
#include <stdexcept>
#include <string>
#include <vector>

#include "contract/TemporaryFolder.h"
#include "database/sql/SqlDialects.h"
#include "host/DatabaseServices.h"

namespace tolvan::test {

inline const PostgreSqlDialect postgreSqlDialect;

/// The server's process that serves that connection.
inline pid_t BackendOf(DatabaseServices& database) {
  const auto row = database.OpenRecordset(SqlStatement("SELECT pg_backend_pid()"));
  return static_cast<pid_t>(*IntegerOf(row->Value(std::size_t{0})));
}

/// This machine lets nobody mount a file system.
struct CannotMount : std::runtime_error {
  using std::runtime_error::runtime_error;
};

class PostgresServer {
 public:
  struct Options {
    /// Bytes of a file system that the server sees in SmallDisk, which is there for it alone and gone with it. 0: none.
    std::size_t smallDisk = 0;
    /// As in daily use. Without it processes may be killed at any moment all the same, and a recovery takes no seconds.
    bool syncs = false;
  };

  /// Makes and starts it. Throws std::runtime_error with the log when it does not come up; CannotMount.
  explicit PostgresServer(Options options);
  ~PostgresServer();
  PostgresServer(const PostgresServer&) = delete;
  PostgresServer& operator=(const PostgresServer&) = delete;

  /// The one that all tests of the program share, started at the first call and stopped by the program's end.
  static PostgresServer& Shared();

  std::string SmallDisk() const { return folder_.File("disco"); }

  void Start();
  /// Without mercy: the processes are killed.
  void Kill();
  void Signal(int signal) const;
  /// It comes back by itself after the loss of one process, which it does not notice at once. Throws std::runtime_error
  /// when it does not.
  void WaitUntilItAnswers();

  /// A new, empty database; its name.
  std::string MakeDatabase();
  /// The ODBC connection string of a database, for the server's own administrator or another user, who needs no
  /// password.
  std::string ConnectionString(const std::string& database, const std::string& user = {}) const;
  /// The output of psql without headings.
  std::string Psql(const std::string& database, const std::string& text) const;
  std::string RunAsServer(const std::vector<std::string>& command) const;
  const std::filesystem::path& Folder() const { return folder_.Path(); }

 private:
  bool TryStart();
  bool Answers() const;
  std::string Log() const;
  int Beginnings() const;  ///< how often it has begun to take connections

  TemporaryFolder folder_;
  std::string programs_;
  pid_t process_ = 0;
  int databases_ = 0;
  int beginnings_ = 0;  ///< when it was last seen
  Options options_;
};

}  // namespace tolvan::test
