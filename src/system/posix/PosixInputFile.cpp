#include "system/posix/PosixInputFile.h"

#include <fcntl.h>
#include <sys/stat.h>

#include <algorithm>
#include <cerrno>

#include "system/posix/SystemFailure.h"

namespace tolvan {
namespace {

constexpr std::size_t aheadSize = 256U << 10;

}  // namespace

PosixInputFile::PosixInputFile(std::string path) : path_(std::move(path)) {
  // Not blocking: opening a pipe must come back so that it can be refused.
  file_ = FileDescriptor(::open(path_.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY));
  if (!file_.IsOpen()) throw SystemFailure(errno, path_);
  struct stat status {};
  if (::fstat(file_.Number(), &status) != 0) throw SystemFailure(errno, path_);
  if (S_ISDIR(status.st_mode)) throw SystemFailure(EISDIR, path_);
  if (!S_ISREG(status.st_mode)) throw HostError(HostErrorKind::Unreachable, "no es un archivo", path_);
  size_ = static_cast<std::uint64_t>(status.st_size);
  ::posix_fadvise(file_.Number(), 0, 0, POSIX_FADV_SEQUENTIAL);
}

std::size_t PosixInputFile::Read(std::span<char> buffer) {
  std::size_t total = TakeAhead(buffer);
  if (total == buffer.size()) return total;
  const std::span<char> rest = buffer.subspan(total);
  if (rest.size() >= aheadSize) return total + ReadDirectly(rest);
  ahead_.resize(aheadSize);
  aheadBegin_ = 0;
  aheadEnd_ = ReadDirectly(ahead_);
  return total + TakeAhead(rest);
}

std::size_t PosixInputFile::TakeAhead(std::span<char> buffer) {
  const std::size_t count = std::min(buffer.size(), aheadEnd_ - aheadBegin_);
  std::copy_n(ahead_.data() + aheadBegin_, count, buffer.data());
  aheadBegin_ += count;
  return count;
}

std::size_t PosixInputFile::ReadDirectly(std::span<char> buffer) {
  std::size_t total = 0;
  while (total < buffer.size()) {
    const ssize_t count = ::read(file_.Number(), buffer.data() + total, buffer.size() - total);
    if (count < 0 && errno == EINTR) continue;
    if (count < 0) throw SystemFailure(errno, path_);
    if (count == 0) break;
    total += static_cast<std::size_t>(count);
  }
  return total;
}

}  // namespace tolvan
