#include "system/posix/PosixWholeFile.h"

#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <memory>

#include "system/posix/PosixPath.h"
#include "system/posix/SystemFailure.h"

namespace tolvan {
namespace {

constexpr std::size_t bufferSize = 256U << 10;

std::string FollowedLinks(const std::string& path) {
  const std::unique_ptr<char, void (*)(void*)> real(::realpath(path.c_str(), nullptr), std::free);
  if (!real) throw SystemFailure(errno, path);
  return real.get();
}

}  // namespace

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

}  // namespace tolvan
