// A zip made in memory: nothing of it ever lies in a file of its own, so no disk can cut it and no killed program leave
// it behind.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "base/Calendar.h"
#include "host/FileHelper.h"

namespace tolvan {

/// One entry. Its content is the pieces one after the other, which must outlive the packing.
struct NewZipEntry {
  std::string name;
  std::vector<std::string_view> pieces;
};

/// Packs the entries, all dated with `day`, and appends the zip to `target`. The same entries and day are the same
/// bytes. Throws HostError as WholeFile does, and Failed when there is not enough memory.
void WriteZip(const std::vector<NewZipEntry>& entries, Date day, WholeFile& target);

}  // namespace tolvan
