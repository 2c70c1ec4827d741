#include "support/PostgresServer.h"

#include <fcntl.h>
#include <grp.h>
#include <pwd.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <chrono>
#include <csignal>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <thread>

namespace tolvan::test {
namespace {

constexpr const char* administrator = "administrador";

/// The newest version that is installed.
std::string FindPrograms() {
  std::filesystem::path newest;
  int newestVersion = 0;
  for (const auto& version : std::filesystem::directory_iterator("/usr/lib/postgresql")) {
    const int number = std::atoi(version.path().filename().c_str());
    if (number > newestVersion && std::filesystem::exists(version.path() / "bin" / "initdb")) {
      newest = version.path() / "bin";
      newestVersion = number;
    }
  }
  return newest.string();
}

/// Whom the server runs as: it refuses root.
const passwd* ServerUser() {
  if (::geteuid() != 0) return nullptr;
  const passwd* user = ::getpwnam("postgres");
  return user != nullptr ? user : ::getpwnam("nobody");
}

/// In the child: gives up root, and follows the test's end.
void BecomeServerUser() {
  ::prctl(PR_SET_PDEATHSIG, SIGINT);
  if (const passwd* user = ServerUser()) {
    if (::setgroups(0, nullptr) != 0 || ::setgid(user->pw_gid) != 0 || ::setuid(user->pw_uid) != 0) ::_exit(126);
    // Changing the user clears it.
    ::prctl(PR_SET_PDEATHSIG, SIGINT);
  }
}

pid_t Spawn(const std::vector<std::string>& command, int output, const std::string& folder) {
  std::vector<char*> arguments;
  for (const std::string& word : command) arguments.push_back(const_cast<char*>(word.c_str()));
  arguments.push_back(nullptr);
  const pid_t child = ::fork();
  if (child != 0) return child;
  BecomeServerUser();
  ::dup2(output, STDOUT_FILENO);
  ::dup2(output, STDERR_FILENO);
  if (::chdir(folder.c_str()) != 0) ::_exit(125);
  ::execv(arguments[0], arguments.data());
  ::_exit(127);
}

}  // namespace

PostgresServer::PostgresServer() : programs_(FindPrograms()) {
  if (programs_.empty()) throw std::runtime_error("PostgreSQL is not installed; see tools/packages");
  if (const passwd* user = ServerUser()) {
    if (::chown(folder_.Path().c_str(), user->pw_uid, user->pw_gid) != 0) throw std::runtime_error("chown failed");
  }
  RunAsServer({programs_ + "/initdb", "-D", folder_.File("datos"), "-U", administrator, "-A", "trust", "-E", "UTF8",
               "--locale=C", "--no-sync", "--no-instructions"});
  Start();
}

PostgresServer::~PostgresServer() {
  if (process_ == 0) return;
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
  for (int attempt = 0; attempt < 20; ++attempt) {
    if (TryStart()) return;
    std::this_thread::sleep_for(std::chrono::milliseconds(200));
  }
  throw std::runtime_error("PostgreSQL did not start:\n" + Log());
}

bool PostgresServer::TryStart() {
  const int log = ::open(folder_.File("registro").c_str(), O_WRONLY | O_CREAT | O_APPEND | O_CLOEXEC, 0644);
  process_ = Spawn({programs_ + "/postgres", "-D", folder_.File("datos"), "-k", folder_.Path().string(), "-c",
                    "listen_addresses=", "-c", "max_connections=40", "-c", "shared_buffers=32MB"},
                   log, folder_.Path().string());
  ::close(log);
  for (int attempt = 0; attempt < 300; ++attempt) {
    if (Answers()) return true;
    if (::waitpid(process_, nullptr, WNOHANG) == process_) {
      process_ = 0;
      return false;
    }
    std::this_thread::sleep_for(std::chrono::milliseconds(50));
  }
  return false;
}

void PostgresServer::Kill() {
  Signal(SIGKILL);
  ::waitpid(process_, nullptr, 0);
  process_ = 0;
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
         ";Uid=" + (user.empty() ? administrator : user) + ";";
}

std::string PostgresServer::Psql(const std::string& database, const std::string& text) const {
  return RunPsql(database, "-c", text);
}

std::string PostgresServer::RunScript(const std::string& database, const std::string& path) const {
  return RunPsql(database, "-f", path);
}

std::string PostgresServer::RunPsql(const std::string& database, const std::string& option,
                                    const std::string& value) const {
  return RunAsServer({programs_ + "/psql", "-h", folder_.Path().string(), "-U", administrator, "-d", database, "-X",
                      "-q", "-A", "-t", "-v", "ON_ERROR_STOP=1", option, value});
}

std::string PostgresServer::RunAsServer(const std::vector<std::string>& command) const {
  std::array<int, 2> pipe{};
  if (::pipe2(pipe.data(), O_CLOEXEC) != 0) throw std::runtime_error("pipe failed");
  const pid_t child = Spawn(command, pipe[1], folder_.Path().string());
  ::close(pipe[1]);
  std::string output;
  std::array<char, 4096> buffer{};
  for (ssize_t count = 0; (count = ::read(pipe[0], buffer.data(), buffer.size())) > 0;) {
    output.append(buffer.data(), static_cast<std::size_t>(count));
  }
  ::close(pipe[0]);
  int status = 0;
  ::waitpid(child, &status, 0);
  if (status != 0) throw std::runtime_error(command.front() + " failed: " + output);
  while (output.ends_with('\n')) output.pop_back();
  return output;
}

bool PostgresServer::Answers() const {
  try {
    return Psql("postgres", "SELECT 1") == "1";
  } catch (const std::runtime_error&) {
    return false;
  }
}

std::string PostgresServer::Log() const {
  std::ifstream file(folder_.File("registro"));
  return {std::istreambuf_iterator<char>(file), {}};
}

}  // namespace tolvan::test
