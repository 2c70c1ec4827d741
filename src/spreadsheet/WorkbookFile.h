// The workbook on disk: opened once, read by position through that descriptor; the numbers in it; and the readers of
// its rows. It is never mapped, because a mapped file that another program truncates ends the process. A file that is
// replaced or deleted meanwhile is read on as it was; one that is changed in place is noticed.
#pragma once

#include <bit>
#include <cstdint>
#include <ctime>
#include <memory>
#include <span>
#include <string>

#include "system/posix/PosixFiles.h"

namespace tolvan {

class Interruption;
class WorksheetReader;

/// Numbers as the workbook formats store them, little-endian, read from any address.
inline std::uint16_t ReadU16(const unsigned char* bytes) {
  return static_cast<std::uint16_t>(bytes[0] | bytes[1] << 8);
}

inline std::uint32_t ReadU32(const unsigned char* bytes) {
  return static_cast<std::uint32_t>(ReadU16(bytes)) | static_cast<std::uint32_t>(ReadU16(bytes + 2)) << 16;
}

inline std::uint64_t ReadU64(const unsigned char* bytes) {
  return static_cast<std::uint64_t>(ReadU32(bytes)) | static_cast<std::uint64_t>(ReadU32(bytes + 4)) << 32;
}

inline double ReadDouble(const unsigned char* bytes) {
  return std::bit_cast<double>(ReadU64(bytes));
}

class WorkbookFile {
 public:
  /// Throws HostError Unreachable, Access or Failed, and Damaged for what is not a file, an empty file and one that
  /// is too big.
  explicit WorkbookFile(const std::string& path);

  std::uint64_t Size() const { return size_; }

  /// Reads from `offset` as far as the file goes and returns the number of bytes read. Throws HostError Failed, and
  /// Damaged when the file was changed since it was opened.
  std::size_t ReadAt(std::uint64_t offset, std::span<char> buffer) const;

  /// Throws HostError Damaged when the file was changed since it was opened.
  void CheckUnchanged() const;

  /// A descriptor of the same open file, which the caller owns. Throws HostError Failed.
  int Duplicate() const;

 private:
  FileDescriptor file_;
  std::uint64_t size_ = 0;
  timespec modified_{};
};

/// Readers of the first worksheet of an .xls (BIFF8 in a compound file) and of an .xlsx. Only the shared strings and a
/// piece of the sheet are in memory. `interruption` must outlive the reader. Throw HostError Damaged for what is no
/// such workbook, Interrupted.
std::unique_ptr<WorksheetReader> ReadXls(std::unique_ptr<WorkbookFile> file, const Interruption& interruption);
std::unique_ptr<WorksheetReader> ReadXlsx(std::unique_ptr<WorkbookFile> file, const Interruption& interruption);

}  // namespace tolvan
