// Zips as archives of files of any kind, with the limits of a workbook's.
#pragma once

#include "host/FileHelper.h"

namespace tolvan {

class ZipArchiveReader final : public ArchiveReader {
 public:
  std::unique_ptr<Archive> OpenArchive(std::string_view path) override;
};

}  // namespace tolvan
