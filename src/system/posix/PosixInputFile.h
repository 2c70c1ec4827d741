// Reads a regular file. Pipes and devices are refused: they have no size, and a pipe nobody writes to would wait for
// ever.
#pragma once

#include <string>
#include <vector>

#include "host/FileHelper.h"
#include "system/posix/FileDescriptor.h"

namespace tolvan {

class PosixInputFile final : public InputFile {
 public:
  /// `path` is absolute. Throws HostError.
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

}  // namespace tolvan
