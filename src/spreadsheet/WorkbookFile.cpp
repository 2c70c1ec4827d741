#include "spreadsheet/WorkbookFile.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <system_error>

#include "spreadsheet/WorkbookFailure.h"
#include "spreadsheet/WorkbookLimits.h"

namespace tolvan {
namespace {

[[noreturn]] void FailSystem(int code) {
  const HostErrorKind kind = code == ENOENT || code == ENOTDIR ? HostErrorKind::Unreachable
                             : code == EACCES || code == EPERM ? HostErrorKind::Access
                                                               : HostErrorKind::Failed;
  throw HostError(kind, std::generic_category().message(code), {}, code);
}

}  // namespace

// Not blocking, so that a named pipe in the file's place is refused rather than waited for.
WorkbookFile::WorkbookFile(const std::string& path)
    : descriptor_(open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NOCTTY | O_NONBLOCK)) {
  if (descriptor_ < 0) FailSystem(errno);
  struct stat status {};
  if (fstat(descriptor_, &status) != 0) {
    const int code = errno;
    close(descriptor_);
    FailSystem(code);
  }
  size_ = static_cast<std::uint64_t>(status.st_size);
  modified_ = status.st_mtim;
  const char* fault = !S_ISREG(status.st_mode)           ? "no es un archivo"
                      : size_ == 0                       ? "el archivo está vacío"
                      : size_ > limits::maximumFileBytes ? "el tamaño del archivo supera el límite admitido"
                                                         : nullptr;
  if (fault != nullptr) {
    close(descriptor_);
    FailDamaged(fault);
  }
}

WorkbookFile::~WorkbookFile() {
  close(descriptor_);
}

std::size_t WorkbookFile::ReadAt(std::uint64_t offset, std::span<char> buffer) const {
  // Formats hold offsets of 64 bits, which a file's position need not take.
  if (offset >= size_) return 0;
  std::size_t done = 0;
  while (done < buffer.size()) {
    const ssize_t count =
        pread(descriptor_, buffer.data() + done, buffer.size() - done, static_cast<off_t>(offset + done));
    if (count < 0 && errno == EINTR) continue;
    if (count < 0) FailSystem(errno);
    if (count == 0) break;
    done += static_cast<std::size_t>(count);
  }
  CheckUnchanged();
  return done;
}

void WorkbookFile::CheckUnchanged() const {
  struct stat status {};
  if (fstat(descriptor_, &status) != 0) FailSystem(errno);
  if (static_cast<std::uint64_t>(status.st_size) != size_ || status.st_mtim.tv_sec != modified_.tv_sec ||
      status.st_mtim.tv_nsec != modified_.tv_nsec)
    FailDamaged("el archivo cambió mientras se leía");
}

int WorkbookFile::Duplicate() const {
  const int copy = fcntl(descriptor_, F_DUPFD_CLOEXEC, 0);
  if (copy < 0) FailSystem(errno);
  return copy;
}

}  // namespace tolvan
