#include "system/posix/PosixFiles.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <string>
#include <thread>
#include <vector>

#include "host/FileHelper.h"
#include "system/Waiting.h"

namespace tolvan {
namespace {

struct Meaning {
  int number;
  HostErrorKind kind;
  const char* text;
};

constexpr std::array meanings{
    Meaning{ENOSPC, HostErrorKind::Full, "el disco está lleno"},
    Meaning{EDQUOT, HostErrorKind::Full, "se agotó la cuota de disco del usuario"},
    Meaning{EFBIG, HostErrorKind::Full, "el archivo supera el tamaño permitido"},
    Meaning{EACCES, HostErrorKind::Access, "no tiene permiso"},
    Meaning{EPERM, HostErrorKind::Access, "el sistema no permite la operación"},
    Meaning{EROFS, HostErrorKind::Access, "la unidad es de solo lectura"},
    Meaning{ENOENT, HostErrorKind::Unreachable, "no existe el archivo o la carpeta"},
    Meaning{ENOTDIR, HostErrorKind::Unreachable, "una parte de la ruta no es una carpeta"},
    Meaning{EISDIR, HostErrorKind::Unreachable, "la ruta es una carpeta, no un archivo"},
    Meaning{ELOOP, HostErrorKind::Unreachable, "la ruta da vueltas por enlaces simbólicos"},
    Meaning{ENAMETOOLONG, HostErrorKind::Unreachable, "el nombre es demasiado largo"},
    Meaning{ENODEV, HostErrorKind::Unreachable, "la unidad no está disponible"},
    Meaning{ENXIO, HostErrorKind::Unreachable, "la unidad no está disponible"},
    Meaning{ESTALE, HostErrorKind::Unreachable, "se perdió la conexión con la carpeta de red"},
    Meaning{EAGAIN, HostErrorKind::Busy, "otro programa lo está usando"},
    Meaning{EBUSY, HostErrorKind::Busy, "otro programa lo está usando"},
    Meaning{ETXTBSY, HostErrorKind::Busy, "otro programa lo está usando"},
    Meaning{EIO, HostErrorKind::Failed, "la unidad no pudo leer o escribir los datos"},
    Meaning{EINTR, HostErrorKind::Interrupted, "se pidió terminar"},
    Meaning{EBADF, HostErrorKind::Failed, "no está abierto"},
    Meaning{EMFILE, HostErrorKind::Failed, "hay demasiados archivos abiertos"},
    Meaning{ENFILE, HostErrorKind::Failed, "hay demasiados archivos abiertos"},
    Meaning{ENOMEM, HostErrorKind::Failed, "memoria insuficiente"},
};

constexpr std::size_t aheadSize = 256U << 10;

class PosixInputFile final : public InputFile {
 public:
  explicit PosixInputFile(std::string path);

  std::uint64_t Size() const override { return size_; }
  std::size_t Read(std::span<char> buffer) override;

 private:
  std::size_t ReadDirectly(std::span<char> buffer);
  std::size_t TakeAhead(std::span<char> buffer);

  std::string path_;
  FileDescriptor file_;
  std::uint64_t size_ = 0;
  std::vector<char> ahead_;  // what small reads take from; empty until the first of them
  std::size_t aheadBegin_ = 0;
  std::size_t aheadEnd_ = 0;
};

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

}  // namespace

HostError SystemFailure(int errorNumber, std::string_view path) {
  for (const Meaning& meaning : meanings) {
    if (meaning.number == errorNumber) return {meaning.kind, meaning.text, std::string(path), errorNumber};
  }
  return {HostErrorKind::Failed, "el sistema no pudo hacer la operación", std::string(path), errorNumber};
}

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

std::unique_ptr<InputFile> OpenInputFile(std::string path) {
  return std::make_unique<PosixInputFile>(std::move(path));
}

}  // namespace tolvan
