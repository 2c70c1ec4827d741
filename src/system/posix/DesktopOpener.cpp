// Hands a file to the desktop by its own command. Some desktops run the program inside that command, so it is left to
// itself once it has had the time to refuse.
#include "system/posix/DesktopOpener.h"

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <chrono>
#include <thread>

#include "host/HostError.h"

namespace tolvan {
namespace {

constexpr std::chrono::milliseconds timeToRefuse{3000};
constexpr std::chrono::milliseconds pause{20};

[[noreturn]] void Fail(const std::string& path, int code) {
  throw HostError(HostErrorKind::Unreachable, "el escritorio no tiene un programa que abra el libro", path, code);
}

/// With no terminal of ours to write to, and in a group of its own so that Ctrl-C does not reach it.
pid_t Spawn(const std::string& path) {
  posix_spawn_file_actions_t actions;
  posix_spawn_file_actions_init(&actions);
  for (const int descriptor : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO})
    posix_spawn_file_actions_addopen(&actions, descriptor, "/dev/null", O_RDWR, 0);
  posix_spawnattr_t attributes;
  posix_spawnattr_init(&attributes);
  posix_spawnattr_setflags(&attributes, POSIX_SPAWN_SETPGROUP);
  std::string command = "xdg-open";
  std::string argument = path;
  const std::array<char*, 3> arguments{command.data(), argument.data(), nullptr};
  pid_t child = -1;
  const int code = posix_spawnp(&child, command.c_str(), &actions, &attributes, arguments.data(), environ);
  posix_spawnattr_destroy(&attributes);
  posix_spawn_file_actions_destroy(&actions);
  if (code != 0) Fail(path, code);
  return child;
}

}  // namespace

void OpenWithDesktop(const std::string& path) {
  const pid_t child = Spawn(path);
  const auto end = std::chrono::steady_clock::now() + timeToRefuse;
  while (std::chrono::steady_clock::now() < end) {
    int status = 0;
    const pid_t done = waitpid(child, &status, WNOHANG);
    if (done == child) {
      if (!WIFEXITED(status) || WEXITSTATUS(status) != 0) Fail(path, WIFEXITED(status) ? WEXITSTATUS(status) : 0);
      return;
    }
    if (done < 0) return;
    std::this_thread::sleep_for(pause);
  }
}

}  // namespace tolvan
