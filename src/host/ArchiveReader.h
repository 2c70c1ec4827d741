// Files that are packed into one, as a zip packs them. Paths are absolute.
#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "host/FileHelper.h"

namespace tolvan {

class Archive {
 public:
  virtual ~Archive() = default;

  /// The names of the files, without folders, in the archive's order. UTF-8, as the archive has them.
  virtual const std::vector<std::string>& Names() const = 0;

  /// Unpacks the file of that place among the names while it is read; its size is what the archive says. The archive
  /// must outlive the result. Throws HostError Damaged: for a password or a packing that is not known at once, while
  /// reading for a fault, for a size or a ratio past the limits, and at the end for a wrong checksum; its text is a
  /// Spanish cause that begins in lower case.
  virtual std::unique_ptr<InputFile> Open(std::size_t place) = 0;
};

class ArchiveReader {
 public:
  virtual ~ArchiveReader() = default;

  /// Throws HostError Unreachable or Access as FileHelper::OpenInput does, Damaged when it is no whole archive or its
  /// table of contents is past the limits, Configuration where no archive can be read.
  virtual std::unique_ptr<Archive> OpenArchive(std::string_view path) = 0;
};

}  // namespace tolvan
