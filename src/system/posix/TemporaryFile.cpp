#include "system/posix/TemporaryFile.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>

#include <cerrno>
#include <cstdio>
#include <optional>

#include "system/posix/SystemFailure.h"

namespace tolvan {
namespace {

constexpr int mostWriters = 64;  // in one folder at the same time

// Nothing when the system does not tell; errno says why.
std::optional<bool> NameLeadsTo(const std::string& path, int file) {
  struct stat named {};
  struct stat opened {};
  if (::fstat(file, &opened) != 0) return std::nullopt;
  if (::lstat(path.c_str(), &named) != 0) return errno == ENOENT ? std::optional(false) : std::nullopt;
  return named.st_dev == opened.st_dev && named.st_ino == opened.st_ino;
}

// A file system that knows no locks answers with another error than EWOULDBLOCK: there a new file counts as ours.
bool LockIsOurs(int file) {
  return ::flock(file, LOCK_EX | LOCK_NB) == 0 || errno != EWOULDBLOCK;
}

// Removes what a killed program left under this name. False when the file belongs to a living program or to somebody
// else.
bool RemoveAbandoned(const std::string& path) {
  const FileDescriptor file(::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK));
  if (!file.IsOpen()) return errno == ENOENT;
  struct stat status {};
  if (::fstat(file.Number(), &status) != 0 || !S_ISREG(status.st_mode)) return false;
  if (::flock(file.Number(), LOCK_EX | LOCK_NB) != 0) return false;
  const std::optional<bool> isThis = NameLeadsTo(path, file.Number());
  return isThis && (!*isThis || ::unlink(path.c_str()) == 0);
}

}  // namespace

TemporaryFile::TemporaryFile(std::string folder) : folder_(std::move(folder)) {
  for (int number = 1; number <= mostWriters; ++number) {
    const std::string separator = folder_ == "/" ? "" : "/";
    if (TakeName(folder_ + separator + ".tolvan-" + std::to_string(number) + ".tmp")) return;
  }
  throw SystemFailure(EBUSY, folder_);
}

bool TemporaryFile::TakeName(const std::string& candidate) {
  constexpr int attempts = 3;  // another program may take or remove the name between two steps
  for (int attempt = 0; attempt < attempts; ++attempt) {
    FileDescriptor file(::open(candidate.c_str(), O_RDWR | O_CREAT | O_EXCL | O_CLOEXEC | O_NOFOLLOW, 0666));
    if (!file.IsOpen() && errno != EEXIST) throw SystemFailure(errno, folder_);
    if (!file.IsOpen()) {
      if (!RemoveAbandoned(candidate)) return false;
      continue;
    }
    if (!LockIsOurs(file.Number())) continue;
    const std::optional<bool> isOurs = NameLeadsTo(candidate, file.Number());
    if (!isOurs) {
      const int errorNumber = errno;
      ::unlink(candidate.c_str());
      throw SystemFailure(errorNumber, folder_);
    }
    if (!*isOurs) continue;
    file_ = std::move(file);
    path_ = candidate;
    return true;
  }
  return false;
}

TemporaryFile::~TemporaryFile() {
  if (!path_.empty()) ::unlink(path_.c_str());
}

void TemporaryFile::RenameTo(const std::string& target) {
  if (::fsync(file_.Number()) != 0) throw SystemFailure(errno, target);
  if (::rename(path_.c_str(), target.c_str()) != 0) throw SystemFailure(errno, target);
  path_.clear();
  // The new content is in its place now, so a folder that cannot be synced is no failure any more; some network file
  // systems know no such call.
  const FileDescriptor folder(::open(folder_.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
  if (folder.IsOpen()) ::fsync(folder.Number());
}

}  // namespace tolvan
