// The workbook on disk: opened once, read by position through that descriptor. It is never mapped, because a mapped
// file that another program truncates ends the process. A file replaced or deleted meanwhile goes on as it was; one
// that is changed in place is noticed.
#pragma once

#include <cstdint>
#include <ctime>
#include <span>
#include <string>

namespace tolvan {

class WorkbookFile {
 public:
  /// Throws HostError Unreachable, Access or Failed, and Damaged for what is no file, an empty one and one that is too
  /// big.
  explicit WorkbookFile(const std::string& path);
  ~WorkbookFile();
  WorkbookFile(const WorkbookFile&) = delete;
  WorkbookFile& operator=(const WorkbookFile&) = delete;

  std::uint64_t Size() const { return size_; }

  /// Reads from `offset` on as far as the file goes; the number of bytes read. Throws HostError Failed, and Damaged
  /// when the file was changed since it was opened.
  std::size_t ReadAt(std::uint64_t offset, std::span<char> buffer) const;

  /// Throws HostError Damaged when the file was changed since it was opened.
  void CheckUnchanged() const;

  /// A descriptor of the same open file that the caller owns. Throws HostError Failed.
  int Duplicate() const;

 private:
  int descriptor_ = -1;
  std::uint64_t size_ = 0;
  timespec modified_{};
};

}  // namespace tolvan
