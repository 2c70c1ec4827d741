// A file that is whole or absent, by way of a temporary file in the same folder.
//
// A file that is replaced keeps its mode and, where this user may set it, its owner. A symbolic link stays, and the
// file it leads to is replaced; a link that leads nowhere is replaced itself. A file that this user may not write is
// not replaced although its folder would allow it, and neither is anything that is no regular file.
#pragma once

#include <sys/stat.h>

#include <optional>
#include <string>

#include "host/FileHelper.h"
#include "system/posix/TemporaryFile.h"

namespace tolvan {

class PosixWholeFile final : public WholeFile {
 public:
  /// `path` is absolute. Throws HostError.
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

}  // namespace tolvan
