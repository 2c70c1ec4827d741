// Open files and locks of the operating system, and the one translator of its error numbers.
#pragma once

#include <unistd.h>

#include <chrono>
#include <memory>
#include <string>
#include <string_view>
#include <utility>

#include "host/FileHelper.h"
#include "host/UserInterface.h"

namespace tolvan {

/// The failure of a system call. `errorNumber` is errno as it stood after the call, `path` what the call worked on.
/// ENOSPC, EDQUOT and EFBIG are Full; EACCES, EPERM and EROFS are Access; a path that leads nowhere is Unreachable; a
/// lock held by another program is Busy; a failing device is Failed.
HostError SystemFailure(int errorNumber, std::string_view path);

/// Owns an open file descriptor of the operating system; -1 is none.
class FileDescriptor {
 public:
  FileDescriptor() = default;
  explicit FileDescriptor(int number) : number_(number) {}
  FileDescriptor(FileDescriptor&& other) noexcept : number_(std::exchange(other.number_, -1)) {}
  FileDescriptor& operator=(FileDescriptor&& other) noexcept {
    std::swap(number_, other.number_);
    return *this;
  }
  ~FileDescriptor() {
    if (number_ >= 0) ::close(number_);
  }

  bool IsOpen() const { return number_ >= 0; }
  int Number() const { return number_; }

 private:
  int number_ = -1;
};

/// Opens a regular file for reading; `path` is absolute. Pipes and devices are refused: they have no size, and a pipe
/// nobody writes to would wait for ever. Throws HostError.
std::unique_ptr<InputFile> OpenInputFile(std::string path);

/// A file that is whole or absent, by way of a temporary file in the same folder; `path` is absolute.
///
/// A file that is replaced keeps its mode and, where this user may set it, its owner. A symbolic link stays, and the
/// file it leads to is replaced; a link that leads nowhere is replaced itself. A file that this user may not write is
/// not replaced although its folder would allow it, and neither is anything that is not a regular file. Throws
/// HostError.
std::unique_ptr<WholeFile> CreateWholeFile(std::string path);

/// Keeps other programs out while it lives. The lock is one on a file of its own, which stays: removing it would let
/// two programs hold locks of the same name.
class FileLock {
 public:
  /// Throws HostError Busy when another program holds the lock longer than `wait`, Interrupted when the user ends the
  /// wait (null: he cannot), and what making the file may throw.
  FileLock(const std::string& path, std::chrono::milliseconds wait, const Interruption* interruption = nullptr);

 private:
  FileDescriptor file_;
};

}  // namespace tolvan
