#include "platform/settings/FileLock.h"

#include <fcntl.h>
#include <sys/file.h>

#include <cerrno>
#include <thread>

#include "platform/files/SystemFailure.h"

namespace tolvan {

FileLock::FileLock(const std::string& path, std::chrono::milliseconds wait)
    : file_(::open(path.c_str(), O_RDONLY | O_CREAT | O_CLOEXEC | O_NOCTTY | O_NONBLOCK, 0666)) {
  if (!file_.IsOpen()) throw SystemFailure(errno, path);
  constexpr std::chrono::milliseconds pause(5);
  const auto end = std::chrono::steady_clock::now() + wait;
  while (::flock(file_.Number(), LOCK_EX | LOCK_NB) != 0) {
    if (errno != EWOULDBLOCK && errno != EINTR) throw SystemFailure(errno, path);
    if (std::chrono::steady_clock::now() >= end) throw SystemFailure(EBUSY, path);
    std::this_thread::sleep_for(pause);
  }
}

}  // namespace tolvan
