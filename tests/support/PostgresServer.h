// A PostgreSQL server of the tests' own: a private folder, a Unix socket in it and no network port, run by a user who
// is not root. The cluster that the machine may run for others is never touched.
#pragma once

#include <sys/types.h>

#include <filesystem>
#include <string>
#include <vector>

#include "contract/TemporaryFolder.h"

namespace tolvan::test {

class PostgresServer {
 public:
  /// Makes and starts it. Throws std::runtime_error with the log when it does not come up.
  PostgresServer();
  ~PostgresServer();
  PostgresServer(const PostgresServer&) = delete;
  PostgresServer& operator=(const PostgresServer&) = delete;

  /// The one that all tests of the program share, started at the first call and stopped by the program's end.
  static PostgresServer& Shared();

  void Start();
  /// Without mercy: the processes are killed.
  void Kill();
  void Signal(int signal) const;

  /// A new, empty database; its name.
  std::string MakeDatabase();
  /// The ODBC connection string of a database, for the server's own administrator or another user, who needs no
  /// password.
  std::string ConnectionString(const std::string& database, const std::string& user = {}) const;
  /// The output of psql without headings.
  std::string Psql(const std::string& database, const std::string& text) const;
  /// The same for a file of commands, which the server's user may read.
  std::string RunScript(const std::string& database, const std::string& path) const;
  std::string RunAsServer(const std::vector<std::string>& command) const;
  const std::filesystem::path& Folder() const { return folder_.Path(); }

 private:
  bool TryStart();
  bool Answers() const;
  std::string Log() const;
  std::string RunPsql(const std::string& database, const std::string& option, const std::string& value) const;

  TemporaryFolder folder_;
  std::string programs_;
  pid_t process_ = 0;
  int databases_ = 0;
};

}  // namespace tolvan::test
