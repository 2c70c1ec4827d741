#include "system/posix/PosixServices.h"

#include <dlfcn.h>
#include <fcntl.h>
#include <nettle/base16.h>
#include <nettle/md5.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <csignal>
#include <ctime>
#include <filesystem>
#include <thread>

#include "host/HostError.h"

namespace tolvan {
namespace {

// Absolute, so that no search path of the environment decides what is loaded.
std::filesystem::path ModulePath(const std::string& file) {
  std::error_code error;
  const std::filesystem::path folder = std::filesystem::read_symlink("/proc/self/exe", error).parent_path();
  const std::filesystem::path beside = folder / file;
  if (std::filesystem::exists(beside, error)) return beside;
  return folder.parent_path() / "lib" / "tolvan-impexp" / file;
}

constexpr std::chrono::milliseconds timeToRefuse{3000};
constexpr std::chrono::milliseconds pause{20};

[[noreturn]] void Fail(const std::string& path, int code) {
  throw HostError(HostErrorKind::Unreachable, "el escritorio no tiene un programa que abra el libro", path, code);
}

/// Starts the desktop's own command. It has no terminal of ours to write to, is in a group of its own so that Ctrl-C
/// does not reach it, and ends at a closed pipe like any program, although this one ignores that signal.
pid_t StartDesktopCommand(const std::string& path) {
  posix_spawn_file_actions_t actions;
  posix_spawn_file_actions_init(&actions);
  for (const int descriptor : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO})
    posix_spawn_file_actions_addopen(&actions, descriptor, "/dev/null", O_RDWR, 0);
  posix_spawnattr_t attributes;
  posix_spawnattr_init(&attributes);
  sigset_t brokenPipe;
  sigemptyset(&brokenPipe);
  sigaddset(&brokenPipe, SIGPIPE);
  posix_spawnattr_setsigdefault(&attributes, &brokenPipe);
  posix_spawnattr_setflags(&attributes, POSIX_SPAWN_SETPGROUP | POSIX_SPAWN_SETSIGDEF);
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

DateTime SystemClock::Now() const {
  const std::time_t now = std::time(nullptr);
  std::tm local{};
  ::localtime_r(&now, &local);
  constexpr int tmYearBase = 1900;
  constexpr int lastSecond = 59;  // a leap second counts as the one before
  return {Date::FromParts(local.tm_year + tmYearBase, local.tm_mon + 1, local.tm_mday), local.tm_hour, local.tm_min,
          std::min(local.tm_sec, lastSecond)};
}

std::string NettleHashService::Md5(std::string_view bytes) const {
  md5_ctx context{};
  md5_init(&context);
  md5_update(&context, bytes.size(), reinterpret_cast<const std::uint8_t*>(bytes.data()));
  std::array<std::uint8_t, MD5_DIGEST_SIZE> digest{};
  md5_digest(&context, digest.size(), digest.data());
  std::string text(BASE16_ENCODE_LENGTH(digest.size()), '\0');
  base16_encode_update(text.data(), digest.size(), digest.data());
  return text;
}

void* ModuleLoader::Find(const char* name) {
  if (module_ == nullptr) module_ = ::dlopen(ModulePath(file_).c_str(), RTLD_NOW | RTLD_LOCAL | RTLD_NODELETE);
  if (module_ == nullptr) FailLoading();
  void* entry = ::dlsym(module_, name);
  if (entry == nullptr) FailLoading();
  return entry;
}

void ModuleLoader::FailLoading() const {
  const char* cause = ::dlerror();
  throw HostError(HostErrorKind::Configuration, "no se puede cargar " + purpose_, cause == nullptr ? "" : cause);
}

// Some desktops run the program inside their command, so that is left to itself once it has had the time to refuse.
void OpenWithDesktop(const std::string& path) {
  const pid_t child = StartDesktopCommand(path);
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
