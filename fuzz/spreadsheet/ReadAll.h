// Reads a workbook to its end and looks at every byte delivered, so that a sanitizer sees a wrong view.
#pragma once

#include <sys/mman.h>
#include <unistd.h>

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <string>

#include "host/SpreadsheetApplication.h"
#include "spreadsheet/WorkbookFile.h"

namespace tolvan {

class NeverAsked : public Interruption {
 public:
  bool Requested() const noexcept override { return false; }
};

/// A workbook file in memory, which has a name as long as the object lives.
class MemoryFile {
 public:
  MemoryFile(const std::uint8_t* data, std::size_t size) : descriptor_(memfd_create("libro", MFD_CLOEXEC)) {
    if (descriptor_ < 0 || write(descriptor_, data, size) != static_cast<ssize_t>(size)) std::abort();
  }
  ~MemoryFile() { close(descriptor_); }
  MemoryFile(const MemoryFile&) = delete;
  MemoryFile& operator=(const MemoryFile&) = delete;

  std::string Path() const { return "/proc/self/fd/" + std::to_string(descriptor_); }

 private:
  int descriptor_;
};

using MakeReader = decltype(&ReadXlsx);

inline void ReadAll(MakeReader makeReader, const std::uint8_t* data, std::size_t size) {
  if (size == 0) return;
  const MemoryFile file(data, size);
  const NeverAsked never;
  try {
    const auto reader = makeReader(std::make_unique<WorkbookFile>(file.Path()), never);
    std::uint32_t last = 0;
    unsigned sum = 0;
    for (SheetRow row; reader->NextRow(row);) {
      if (row.number <= last || row.cells.empty()) std::abort();
      last = row.number;
      std::uint32_t column = 0;
      for (const SheetCell& cell : row.cells) {
        if (cell.column <= column || cell.kind == CellKind::Empty) std::abort();
        column = cell.column;
        for (const char c : cell.AsText()) sum += static_cast<unsigned char>(c);
      }
    }
    [[maybe_unused]] volatile unsigned used = sum;
  } catch (const HostError& error) {
    if (error.Kind() != HostErrorKind::Damaged) std::abort();
  }
}

}  // namespace tolvan
