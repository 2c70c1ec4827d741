#include "spreadsheet/WorkbookFile.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>

#include "spreadsheet/WorkbookLimits.h"

namespace tolvan {

// Not blocking, so that a named pipe in the file's place is refused rather than waited for.
WorkbookFile::WorkbookFile(const std::string& path)
    : file_(open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NOCTTY | O_NONBLOCK)) {
  if (!file_.IsOpen()) throw SystemFailure(errno, {});
  struct stat status {};
  if (fstat(file_.Number(), &status) != 0) throw SystemFailure(errno, {});
  size_ = static_cast<std::uint64_t>(status.st_size);
  modified_ = status.st_mtim;
  if (!S_ISREG(status.st_mode)) FailDamaged("no es un archivo");
  if (size_ == 0) FailDamaged("el archivo está vacío");
  if (size_ > limits::maximumFileBytes) FailTooBig("el tamaño del archivo");
}

std::size_t WorkbookFile::ReadAt(std::uint64_t offset, std::span<char> buffer) const {
  // Formats hold offsets of 64 bits, which a file's position need not take.
  if (offset >= size_) return 0;
  std::size_t done = 0;
  while (done < buffer.size()) {
    const ssize_t count =
        pread(file_.Number(), buffer.data() + done, buffer.size() - done, static_cast<off_t>(offset + done));
    if (count < 0 && errno == EINTR) continue;
    if (count < 0) throw SystemFailure(errno, {});
    if (count == 0) break;
    done += static_cast<std::size_t>(count);
  }
  CheckUnchanged();
  return done;
}

void WorkbookFile::CheckUnchanged() const {
  struct stat status {};
  if (fstat(file_.Number(), &status) != 0) throw SystemFailure(errno, {});
  if (static_cast<std::uint64_t>(status.st_size) != size_ || status.st_mtim.tv_sec != modified_.tv_sec ||
      status.st_mtim.tv_nsec != modified_.tv_nsec)
    FailDamaged("el archivo cambió mientras se leía");
}

int WorkbookFile::Duplicate() const {
  const int copy = fcntl(file_.Number(), F_DUPFD_CLOEXEC, 0);
  if (copy < 0) throw SystemFailure(errno, {});
  return copy;
}

}  // namespace tolvan
