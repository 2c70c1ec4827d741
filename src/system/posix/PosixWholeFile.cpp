// New files, written beside their place and put there when they are whole.
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <sys/types.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <optional>
#include <string>

#include "host/FileHelper.h"
#include "system/posix/PosixFiles.h"
#include "system/posix/PosixPath.h"

namespace tolvan {
namespace {

/// The temporary file in which a new content grows beside the file it will replace.
///
/// Names are ".tolvan-1.tmp", ".tolvan-2.tmp" and so on: the first number that no living program holds (the file is
/// locked while it is written). A program that was killed leaves its number unlocked, and the next one that writes
/// anything into the folder takes it over, so remains never pile up and nobody has to search the folder for them.
class TemporaryFile {
 public:
  /// A new empty file in `folder`, an absolute path. Throws HostError.
  explicit TemporaryFile(std::string folder);

  TemporaryFile(const TemporaryFile&) = delete;
  TemporaryFile& operator=(const TemporaryFile&) = delete;

  /// Removes the file unless it was renamed.
  ~TemporaryFile();

  int Number() const { return file_.Number(); }

  /// Makes the content durable, puts the file at `target` (same folder) and makes the new name durable. Throws
  /// HostError; then `target` is as it was.
  void RenameTo(const std::string& target);

 private:
  bool TakeName(const std::string& candidate);

  std::string folder_;
  std::string path_;  // empty when there is nothing to remove
  FileDescriptor file_;
};

constexpr int mostWriters = 64;  // in one folder at the same time

// Nothing when the system does not say; errno says why.
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

class PosixWholeFile final : public WholeFile {
 public:
  explicit PosixWholeFile(std::string path);

  void Write(std::string_view bytes) override;
  void Commit() override;

 private:
  void CopyRights(const struct stat& status);
  void FlushBuffer();
  [[noreturn]] void Abandon(int errorNumber);

  std::string path_;
  std::string target_;
  std::optional<TemporaryFile> temporary_;  // nothing after Commit or a failure
  std::string buffer_;
};

constexpr std::size_t bufferSize = 256U << 10;

std::string FollowedLinks(const std::string& path) {
  const std::unique_ptr<char, void (*)(void*)> real(::realpath(path.c_str(), nullptr), std::free);
  if (!real) throw SystemFailure(errno, path);
  return real.get();
}

PosixWholeFile::PosixWholeFile(std::string path) : path_(std::move(path)), target_(path_) {
  struct stat status {};
  if (::stat(path_.c_str(), &status) != 0) {
    if (errno != ENOENT) throw SystemFailure(errno, path_);
    temporary_.emplace(FolderOf(target_));
    return;
  }
  if (S_ISDIR(status.st_mode)) throw SystemFailure(EISDIR, path_);
  if (!S_ISREG(status.st_mode)) throw HostError(HostErrorKind::Access, "no es un archivo", path_);
  if (::access(path_.c_str(), W_OK) != 0) throw SystemFailure(errno, path_);
  target_ = FollowedLinks(path_);
  temporary_.emplace(FolderOf(target_));
  CopyRights(status);
}

void PosixWholeFile::CopyRights(const struct stat& status) {
  // Another owner can only be set by a privileged user; everybody else becomes the owner of what he writes. The mode
  // comes after, because a change of owner takes bits of it away.
  [[maybe_unused]] const int owned = ::fchown(temporary_->Number(), status.st_uid, status.st_gid);
  if (::fchmod(temporary_->Number(), status.st_mode & 07777) != 0) Abandon(errno);
}

void PosixWholeFile::Write(std::string_view bytes) {
  if (!temporary_) throw HostError(HostErrorKind::Failed, "el archivo ya no admite datos", path_);
  buffer_.append(bytes);
  if (buffer_.size() >= bufferSize) FlushBuffer();
}

void PosixWholeFile::Commit() {
  if (!temporary_) throw HostError(HostErrorKind::Failed, "el archivo ya no admite datos", path_);
  FlushBuffer();
  try {
    temporary_->RenameTo(target_);
  } catch (const HostError& error) {
    Abandon(static_cast<int>(error.NativeCode()));
  }
  temporary_.reset();
}

void PosixWholeFile::FlushBuffer() {
  std::string_view rest = buffer_;
  while (!rest.empty()) {
    const ssize_t count = ::write(temporary_->Number(), rest.data(), rest.size());
    if (count < 0 && errno == EINTR) continue;
    if (count < 0) Abandon(errno);
    rest.remove_prefix(static_cast<std::size_t>(count));
  }
  buffer_.clear();
}

void PosixWholeFile::Abandon(int errorNumber) {
  temporary_.reset();
  throw SystemFailure(errorNumber, path_);
}

}  // namespace

std::unique_ptr<WholeFile> CreateWholeFile(std::string path) {
  return std::make_unique<PosixWholeFile>(std::move(path));
}

}  // namespace tolvan
