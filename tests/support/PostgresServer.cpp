#include "support/PostgresServer.h"

#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <csignal>
#include <stdexcept>

#include "support/ChildProcess.h"
#include "support/FileContent.h"

namespace tolvan::test {

PostgresServer::PostgresServer(const std::string& fsync) : fsync_("fsync=" + fsync) {
  Start();
}

PostgresServer::~PostgresServer() {
  Signal(SIGCONT);
  Signal(SIGQUIT);
  ::waitpid(process_, nullptr, 0);
}

PostgresServer& PostgresServer::Shared() {
  static PostgresServer server;
  return server;
}

void PostgresServer::Start() {
  // After a kill the server's last processes may still hold its memory: then it ends at once, and is started again.
  for (int attempt = 0; attempt < 300; ++attempt) {
    if (process_ == 0 || ::waitpid(process_, nullptr, WNOHANG) == process_) {
      const int log = ::open(folder_.File("registro").c_str(), O_WRONLY | O_CREAT | O_APPEND | O_CLOEXEC, 0644);
      process_ = StartProgram({TOLVAN_TEST_SUPPORT_FOLDER "/postgres_server", folder_.Path(), "-c",
                               "listen_addresses=", "-c", "max_connections=40", "-c", "shared_buffers=32MB", "-c",
                               "synchronous_standby_names=nadie", "-c", "synchronous_commit=local", "-c", fsync_},
                              log, [log] { ::dup2(log, STDERR_FILENO); });
      ::close(log);
    }
    try {
      Psql("postgres", "");
      return;
    } catch (const std::runtime_error&) {
      ::usleep(50'000);
    }
  }
  throw std::runtime_error("PostgreSQL did not start (see tools/packages):\n" + ReadFile(folder_.File("registro")));
}

void PostgresServer::Restart() {
  Signal(SIGKILL);
  ::waitpid(process_, nullptr, 0);
  process_ = 0;
  Start();
}

void PostgresServer::Signal(int signal) const {
  ::kill(process_, signal);
}

std::string PostgresServer::MakeDatabase() {
  const std::string name = "prueba" + std::to_string(++databases_);
  Psql("postgres", "CREATE DATABASE " + name);
  return name;
}

std::string PostgresServer::ConnectionString(const std::string& database, const std::string& user) const {
  return "Driver={PostgreSQL Unicode};Server=" + folder_.Path().string() + ";Port=5432;Database=" + database +
         ";Uid=" + user;
}

std::string PostgresServer::Psql(const std::string& database, const std::string& text) const {
  std::array<int, 2> pipe{};
  if (::pipe2(pipe.data(), O_CLOEXEC) != 0) throw std::runtime_error("pipe failed");
  const pid_t psql = StartProgram({"/usr/bin/psql", "-h", folder_.Path(), "-p", "5432", "-U", administrator, "-d",
                                   database, "-XqAt", "-v", "ON_ERROR_STOP=1", "-c", text},
                                  pipe[1], [&] { ::dup2(pipe[1], STDERR_FILENO); });
  ::close(pipe[1]);
  std::string output = ReadToEnd(pipe[0]);
  int status = 0;
  ::waitpid(psql, &status, 0);
  if (status != 0) throw std::runtime_error(text + " failed: " + output);
  return output.substr(0, output.find_last_not_of('\n') + 1);
}

}  // namespace tolvan::test
