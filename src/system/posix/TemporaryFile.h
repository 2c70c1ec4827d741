// The temporary file in which a new content grows beside the file it will replace.
//
// Names are ".tolvan-1.tmp", ".tolvan-2.tmp" and so on: the first number that no living program holds (the file is
// locked while it is written). A program that was killed leaves its number unlocked, and the next one that writes
// anything into the folder takes it over, so remains never pile up and nobody has to search the folder for them.
#pragma once

#include <sys/types.h>

#include <string>

#include "system/posix/FileDescriptor.h"

namespace tolvan {

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

}  // namespace tolvan
