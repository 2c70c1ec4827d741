// A PostgreSQL server of the tests' own: a private folder, a Unix socket in it and no network port, run by a user who
// is not root. The cluster that the machine may run for others is never touched. A session that sets synchronous_commit
// to "on" waits in its commit without end, after it was kept: for a standby that there is not.
#pragma once

#include <sys/types.h>

#include <filesystem>
#include <string>

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

class PostgresServer {
 public:
  static constexpr const char* administrator = "administrador";

  /// Makes and starts it. Throws std::runtime_error with the log when it does not come up. With `fsync` "on" it writes
  /// as in daily use; without it processes may be killed at any moment all the same, and a recovery takes no seconds.
  explicit PostgresServer(const std::string& fsync = "off");
  ~PostgresServer();
  PostgresServer(const PostgresServer&) = delete;
  PostgresServer& operator=(const PostgresServer&) = delete;

  /// The one that all tests of the program share, started at the first call and stopped by the program's end.
  static PostgresServer& Shared();

  /// Kills the server, as far as it still lives, and waits until it has recovered from that.
  void Restart();
  /// To its first process.
  void Signal(int signal) const;

  /// A new, empty database; its name.
  std::string MakeDatabase();
  /// The ODBC connection string of a database; nobody needs a password.
  std::string ConnectionString(const std::string& database, const std::string& user = administrator) const;
  /// The output of psql without headings. Throws std::runtime_error with it when psql fails.
  std::string Psql(const std::string& database, const std::string& text) const;
  const std::filesystem::path& Folder() const { return folder_.Path(); }

 private:
  void Start();

  TemporaryFolder folder_;
  std::string fsync_;
  pid_t process_ = 0;
  int databases_ = 0;
};

}  // namespace tolvan::test
