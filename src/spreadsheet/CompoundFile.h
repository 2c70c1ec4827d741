// The container of an .xls: a compound file (MS-CFB) holds named streams in chains of sectors, small ones in sectors of
// their own inside another stream. Only streams of the root storage are looked at.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "spreadsheet/WorkbookFile.h"

namespace tolvan {

/// A stream: where its pieces lie in the file. The file must outlive it.
class CompoundStream {
 public:
  struct Extent {
    std::uint64_t streamOffset;
    std::uint64_t fileOffset;
    std::uint64_t length;
  };

  explicit CompoundStream(const WorkbookFile& file) : file_(&file) {}

  /// Adds a piece at the end; pieces that follow each other in the file become one.
  void Append(std::uint64_t fileOffset, std::uint64_t length);

  std::uint64_t Size() const { return size_; }

  /// Where the byte lies in the file. `offset` is below Size.
  std::uint64_t FileOffsetOf(std::uint64_t offset) const;

  /// Reads from `offset` as far as the stream goes and returns the number of bytes; fewer also where the file ends too
  /// early.
  std::size_t ReadAt(std::uint64_t offset, std::span<char> buffer) const;

 private:
  std::vector<Extent>::const_iterator Find(std::uint64_t offset) const;

  const WorkbookFile* file_;
  std::vector<Extent> extents_;
  std::uint64_t size_ = 0;
};

class CompoundFile {
 public:
  /// The file must outlive the object. Throws HostError Damaged.
  explicit CompoundFile(const WorkbookFile& file);

  /// `name` is ASCII and counts without regard to case.
  bool Has(std::string_view name) const { return FindEntry(name) != nullptr; }

  /// Nothing when there is no such stream. Throws HostError Damaged when its chain is broken.
  std::optional<CompoundStream> Open(std::string_view name) const;

 private:
  struct Entry {
    std::string name;  // in lower case; "?" for every character that is not ASCII
    unsigned type = 0;
    std::uint32_t firstSector = 0;
    std::uint64_t size = 0;
  };

  void ReadHeader();
  void ReadSectorTable();
  void ReadDirectory();
  void AddRootChildren(std::span<const char> directory, std::uint32_t first);
  const Entry* FindEntry(std::string_view name) const;

  std::uint64_t OffsetOf(std::uint32_t sector) const { return (std::uint64_t{sector} + 1) << sectorShift_; }
  std::vector<std::uint32_t> ReadNumbers(std::uint32_t sector) const;
  CompoundStream Chain(std::uint32_t first, std::uint64_t size) const;
  CompoundStream MiniChain(std::uint32_t first, std::uint64_t size) const;
  std::vector<std::uint32_t> MiniTable() const;

  const WorkbookFile& file_;
  std::vector<unsigned char> header_;
  unsigned sectorShift_ = 9;
  std::uint64_t sectorCount_ = 0;
  std::vector<std::uint32_t> nextSector_;
  Entry root_;
  std::vector<Entry> streams_;  // of the root storage
};

}  // namespace tolvan
