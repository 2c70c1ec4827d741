#pragma once

#include <chrono>
#include <string>

#include "host/UserInterface.h"
#include "system/posix/FileDescriptor.h"

namespace tolvan {

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
