#include "system/posix/FileLock.h"

#include <fcntl.h>
#include <sys/file.h>

#include <cerrno>
#include <thread>

#include "system/Waiting.h"
#include "system/posix/SystemFailure.h"

namespace tolvan {

FileLock::FileLock(const std::string& path, std::chrono::milliseconds wait, const Interruption* interruption)
    : file_(::open(path.c_str(), O_RDONLY | O_CREAT | O_CLOEXEC | O_NOCTTY | O_NONBLOCK, 0666)) {
  if (!file_.IsOpen()) throw SystemFailure(errno, path);
  Waiting waiting(interruption, "Otro programa está guardando las opciones; esperando…", lockPatience);
  const auto take = [&](std::chrono::milliseconds pause) {
    if (::flock(file_.Number(), LOCK_EX | LOCK_NB) == 0) return true;
    if (errno != EWOULDBLOCK && errno != EINTR) throw SystemFailure(errno, path);
    std::this_thread::sleep_for(pause);
    return false;
  };
  switch (waiting.Until(take, wait)) {
    case WaitEnd::Ready:
      return;
    case WaitEnd::Stopped:
      throw HostError(HostErrorKind::Interrupted, "", path);
    case WaitEnd::TimedOut:
      throw SystemFailure(EBUSY, path);
  }
}

}  // namespace tolvan
