// The parts of an .xlsx, or the files of any other zip, inflated piece by piece. What a hostile zip can cost is bounded
// before the library sees its table of contents, and again while a part is inflated.
#pragma once

#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <vector>

#include "host/FileHelper.h"
#include "spreadsheet/WorkbookFile.h"

namespace tolvan {

/// One part while it is inflated. The package must outlive it.
class ZipPart {
 public:
  struct Handle;
  ZipPart(const WorkbookFile& file, std::unique_ptr<Handle> handle, std::string name, std::uint64_t packedBytes,
          std::uint64_t limit);
  ~ZipPart();

  /// Fills the buffer as far as the part goes; 0 at its end, where its checksum has been verified. Throws HostError
  /// Damaged.
  std::size_t Read(std::span<char> buffer);

  const std::string& Name() const { return name_; }

 private:
  const WorkbookFile& file_;
  std::unique_ptr<Handle> handle_;
  std::string name_;
  std::uint64_t packedBytes_;
  std::uint64_t limit_;
  std::uint64_t inflatedBytes_ = 0;
};

/// A line of the zip's table of contents.
struct ZipEntry {
  std::uint64_t index = 0;
  std::string name;         ///< UTF-8; ends in "/" for a folder
  std::uint64_t bytes = 0;  ///< when inflated, as the zip says
};

class ZipPackage {
 public:
  /// The file must outlive the package. Throws HostError Damaged when it is not a whole zip.
  explicit ZipPackage(const WorkbookFile& file);
  ~ZipPackage();

  /// Part names have no "/" at their beginning and count without regard to case.
  bool Has(const std::string& name) const;

  /// Throws HostError Damaged when there is no such part, or it is encrypted or packed by a method that workbooks do
  /// not use; while reading, when it inflates past `limit` bytes.
  std::unique_ptr<ZipPart> Open(const std::string& name, std::uint64_t limit) const;
  std::unique_ptr<ZipPart> Open(const ZipEntry& entry, std::uint64_t limit) const;

  /// All of the table of contents. Throws HostError Damaged.
  std::vector<ZipEntry> Entries() const;

 private:
  struct Archive;
  const WorkbookFile& file_;
  std::unique_ptr<Archive> archive_;
};

/// Zips as archives of files of any kind, with the limits of a workbook's.
class ZipArchiveReader final : public ArchiveReader {
 public:
  std::unique_ptr<Archive> OpenArchive(std::string_view path) override;
};

}  // namespace tolvan
