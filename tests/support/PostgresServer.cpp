#include "support/PostgresServer.h"

#include <fcntl.h>
#include <grp.h>
#include <pwd.h>
#include <sched.h>
#include <sys/mount.h>
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

#include "support/ChildProcess.h"

namespace tolvan::test {
namespace {

constexpr const char* administrator = "administrador";
constexpr int cannotMount = 124;  // how a child ends that may mount no file system

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
  if (const passwd* user = ServerUser()) {
    if (::setgroups(0, nullptr) != 0 || ::setgid(user->pw_gid) != 0 || ::setuid(user->pw_uid) != 0) ::_exit(126);
  }
  ::prctl(PR_SET_PDEATHSIG, SIGINT);  // changing the user would clear it
}

bool WriteLine(const char* path, const std::string& text) {
  return static_cast<bool>(std::ofstream(path) << text << std::flush);
}

/// In the child: a file system that only it and its children see. Who is not root gets a name space of users first.
bool MountSmallDisk(const std::string& place, std::size_t bytes) {
  const uid_t user = ::geteuid();
  const gid_t group = ::getegid();
  if (user == 0) {
    if (::unshare(CLONE_NEWNS) != 0) return false;
  } else {
    if (::unshare(CLONE_NEWUSER | CLONE_NEWNS) != 0) return false;
    const std::string users = std::to_string(user) + " " + std::to_string(user) + " 1";
    const std::string groups = std::to_string(group) + " " + std::to_string(group) + " 1";
    const bool mapped = WriteLine("/proc/self/setgroups", "deny") && WriteLine("/proc/self/uid_map", users) &&
                        WriteLine("/proc/self/gid_map", groups);
    if (!mapped) return false;
  }
  const passwd* owner = ServerUser();
  const std::string options = "size=" + std::to_string(bytes) +
                              ",mode=700,uid=" + std::to_string(owner != nullptr ? owner->pw_uid : user) +
                              ",gid=" + std::to_string(owner != nullptr ? owner->pw_gid : group);
  return ::mount("none", "/", nullptr, MS_REC | MS_PRIVATE, nullptr) == 0 &&
         ::mount("none", place.c_str(), "tmpfs", 0, options.c_str()) == 0;
}

pid_t Spawn(const std::vector<std::string>& command, int output, const std::string& folder,
            const std::string& diskPlace = {}, std::size_t diskSize = 0) {
  return StartProgram(command, output, [&] {
    if (diskSize != 0 && !MountSmallDisk(diskPlace, diskSize)) ::_exit(cannotMount);
    BecomeServerUser();
    ::dup2(output, STDERR_FILENO);
    if (::chdir(folder.c_str()) != 0) ::_exit(125);
  });
}

}  // namespace

PostgresServer::PostgresServer(Options options) : programs_(FindPrograms()), options_(options) {
  if (programs_.empty()) throw std::runtime_error("PostgreSQL is not installed; see tools/packages");
  if (const passwd* user = ServerUser()) {
    if (::chown(folder_.Path().c_str(), user->pw_uid, user->pw_gid) != 0) throw std::runtime_error("chown failed");
  }
  RunAsServer({programs_ + "/initdb", "-D", folder_.File("datos"), "-U", administrator, "-A", "trust", "-E", "UTF8",
               "--locale=C", "--no-sync", "--no-instructions"});
  if (options_.smallDisk != 0) std::filesystem::create_directory(SmallDisk());
  Start();
}

PostgresServer::~PostgresServer() {
  if (process_ == 0) return;
  Signal(SIGCONT);
  Signal(SIGQUIT);
  ::waitpid(process_, nullptr, 0);
}

PostgresServer& PostgresServer::Shared() {
  static PostgresServer server({});
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
                    "listen_addresses=", "-c", "max_connections=40", "-c", "shared_buffers=32MB", "-c",
                    "synchronous_standby_names=nadie", "-c", "synchronous_commit=local", "-c",
                    options_.syncs ? "fsync=on" : "fsync=off"},
                   log, folder_.Path().string(), SmallDisk(), options_.smallDisk);
  ::close(log);
  for (int attempt = 0; attempt < 300; ++attempt) {
    if (Answers()) {
      beginnings_ = Beginnings();
      return true;
    }
    int status = 0;
    if (::waitpid(process_, &status, WNOHANG) == process_) {
      process_ = 0;
      if (WIFEXITED(status) && WEXITSTATUS(status) == cannotMount) throw CannotMount();
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

void PostgresServer::WaitUntilItAnswers() {
  const int before = beginnings_;
  for (int attempt = 0; attempt < 200; ++attempt) {
    beginnings_ = Beginnings();
    if (beginnings_ > before) return;
    std::this_thread::sleep_for(std::chrono::milliseconds(50));
  }
  throw std::runtime_error("PostgreSQL did not come back:\n" + Log());
}

std::string PostgresServer::MakeDatabase() {
  const std::string name = "prueba" + std::to_string(++databases_);
  Psql("postgres", "CREATE DATABASE " + name);
  return name;
}

std::string PostgresServer::ConnectionString(const std::string& database, const std::string& user) const {
  return "Driver={PostgreSQL Unicode};Server=" + folder_.Path().string() + ";Port=5432;Database=" + database +
         ";Uid=" + (user.empty() ? administrator : user);
}

std::string PostgresServer::Psql(const std::string& database, const std::string& text) const {
  return RunAsServer({programs_ + "/psql", "-h", folder_.Path().string(), "-U", administrator, "-d", database, "-X",
                      "-q", "-A", "-t", "-v", "ON_ERROR_STOP=1", "-c", text});
}

std::string PostgresServer::RunAsServer(const std::vector<std::string>& command) const {
  std::array<int, 2> pipe{};
  if (::pipe2(pipe.data(), O_CLOEXEC) != 0) throw std::runtime_error("pipe failed");
  const pid_t child = Spawn(command, pipe[1], folder_.Path().string());
  ::close(pipe[1]);
  std::string output = ReadToEnd(pipe[0]);
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

int PostgresServer::Beginnings() const {
  const std::string log = Log();
  const std::string_view words = "ready to accept connections";
  int count = 0;
  for (std::size_t at = log.find(words); at != std::string::npos; at = log.find(words, at + 1)) ++count;
  return count;
}

std::string PostgresServer::Log() const {
  std::ifstream file(folder_.File("registro"));
  return {std::istreambuf_iterator<char>(file), {}};
}

}  // namespace tolvan::test
