#include "support/PostgresServer.h"

#include <fcntl.h>
#include <pwd.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <chrono>
#include <csignal>
#include <fstream>
#include <iterator>
#include <map>
#include <stdexcept>
#include <thread>

#include "support/ChildProcess.h"

namespace tolvan::test {
namespace {

constexpr const char* administrator = "administrador";

/// The newest version that is installed.
std::string FindPrograms() {
  std::map<int, std::string> folders;
  for (const auto& version : std::filesystem::directory_iterator("/usr/lib/postgresql")) {
    const std::filesystem::path folder = version.path() / "bin";
    if (std::filesystem::exists(folder / "initdb")) folders[std::atoi(version.path().filename().c_str())] = folder;
  }
  return folders.empty() ? std::string() : folders.rbegin()->second;
}

/// Whom the server runs as: it refuses root.
const passwd* ServerUser() {
  if (::geteuid() != 0) return nullptr;
  const passwd* user = ::getpwnam("postgres");
  return user != nullptr ? user : ::getpwnam("nobody");
}

/// The command as the server's user, who ends with this process. With a size it sees a file system of so many bytes in
/// `place`, which only it and its children see; who is not root mounts one as the root of a name space of users.
std::vector<std::string> AsServer(const std::vector<std::string>& command, const std::string& place = {},
                                  std::size_t diskSize = 0) {
  const passwd* const user = ServerUser();
  const std::string uid = std::to_string(user != nullptr ? user->pw_uid : ::geteuid());
  const std::string gid = std::to_string(user != nullptr ? user->pw_gid : ::getegid());
  const std::string owner = user != nullptr ? ",uid=" + uid + ",gid=" + gid : "";
  std::vector<std::string> words;
  const auto add = [&](const std::vector<std::string>& more) { words.insert(words.end(), more.begin(), more.end()); };
  if (diskSize != 0) {
    add({"/usr/bin/unshare", user != nullptr ? "-m" : "-rm", "/bin/sh", "-c",
         "mount -t tmpfs -o mode=700,size=" + std::to_string(diskSize) + owner + " none \"$0\" && exec \"$@\"", place});
    if (user == nullptr) add({"/usr/bin/unshare", "--user", "--map-user=" + uid, "--map-group=" + gid});
  }
  add({"/usr/bin/setpriv", "--pdeathsig", "INT"});
  if (user != nullptr) add({"--reuid", uid, "--regid", gid, "--clear-groups"});
  add(command);
  return words;
}

pid_t Spawn(const std::vector<std::string>& words, int output, const std::filesystem::path& folder) {
  return StartProgram(words, output, [&] {
    ::dup2(output, STDERR_FILENO);
    if (::chdir(folder.c_str()) != 0) ::_exit(125);
  });
}

/// The output of a program that succeeds.
std::string Run(const std::vector<std::string>& words, const std::filesystem::path& folder) {
  std::array<int, 2> pipe{};
  if (::pipe2(pipe.data(), O_CLOEXEC) != 0) throw std::runtime_error("pipe failed");
  const pid_t child = Spawn(words, pipe[1], folder);
  ::close(pipe[1]);
  std::string output = ReadToEnd(pipe[0]);
  int status = 0;
  ::waitpid(child, &status, 0);
  if (status != 0) throw std::runtime_error(words.back() + " failed: " + output);
  while (output.ends_with('\n')) output.pop_back();
  return output;
}

}  // namespace

PostgresServer::PostgresServer(Options options) : programs_(FindPrograms()), options_(options) {
  if (programs_.empty()) throw std::runtime_error("PostgreSQL is not installed; see tools/packages");
  if (const passwd* user = ServerUser()) {
    if (::chown(folder_.Path().c_str(), user->pw_uid, user->pw_gid) != 0) throw std::runtime_error("chown failed");
  }
  RunAsServer({programs_ + "/initdb", "-D", folder_.File("datos"), "-U", administrator, "-A", "trust", "-E", "UTF8",
               "--locale=C", "--no-sync", "--no-instructions"});
  if (options_.smallDisk != 0) {
    std::filesystem::create_directory(SmallDisk());
    try {
      Run(AsServer({"/bin/true"}, SmallDisk(), options_.smallDisk), folder_.Path());
    } catch (const std::runtime_error& error) {
      throw CannotMount(error.what());
    }
  }
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
  process_ = Spawn(AsServer({programs_ + "/postgres", "-D", folder_.File("datos"), "-k", folder_.Path().string(), "-c",
                             "listen_addresses=", "-c", "max_connections=40", "-c", "shared_buffers=32MB", "-c",
                             "synchronous_standby_names=nadie", "-c", "synchronous_commit=local", "-c",
                             options_.syncs ? "fsync=on" : "fsync=off"},
                            SmallDisk(), options_.smallDisk),
                   log, folder_.Path());
  ::close(log);
  for (int attempt = 0; attempt < 300; ++attempt) {
    if (Answers()) {
      beginnings_ = Beginnings();
      return true;
    }
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
  return Run(AsServer(command), folder_.Path());
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
