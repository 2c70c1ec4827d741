// How much of a workbook or another zip is believed, and how a reader refuses the rest. The limits are the formats' own
// bounds, and bounds on memory and time so that a damaged or hostile file ends in a message; each is far above what a
// real price list holds. See docs/spreadsheets.md.
#pragma once

#include <cstddef>
#include <cstdint>
#include <new>
#include <string>

#include "host/HostError.h"

namespace tolvan {

namespace limits {

inline constexpr std::uint32_t maximumRows = 1'048'576;
inline constexpr std::uint32_t maximumColumns = 16'384;
inline constexpr std::uint32_t maximumXlsColumns = 256;

/// Of the workbook file.
inline constexpr std::uint64_t maximumFileBytes = std::uint64_t{512} << 20;

/// Of one cell or shared string. The programs themselves stop at 32,767 characters.
inline constexpr std::size_t maximumTextBytes = std::size_t{256} << 10;

/// Of all texts that stand inside the cells of one row.
inline constexpr std::size_t maximumRowTextBytes = std::size_t{8} << 20;

/// Of the shared strings: their text and their number (8 bytes each beside the text).
inline constexpr std::size_t maximumSharedTextBytes = std::size_t{128} << 20;
inline constexpr std::size_t maximumSharedStrings = std::size_t{4} << 20;

/// Of one inflated part of an .xlsx or file of another zip, and its size in relation to the packed one, which counts
/// from a floor on.
inline constexpr std::uint64_t maximumPartBytes = std::uint64_t{2} << 30;
inline constexpr std::uint64_t maximumInflationRatio = 200;
inline constexpr std::uint64_t inflationFloorBytes = std::uint64_t{16} << 20;

/// Of the small parts (relationships, workbook, styles) and of the things that they list.
inline constexpr std::uint64_t maximumSmallPartBytes = std::uint64_t{64} << 20;
inline constexpr std::size_t maximumListEntries = 100'000;

/// Of the zip's table of contents.
inline constexpr std::uint64_t maximumZipEntries = 20'000;
inline constexpr std::uint64_t maximumZipDirectoryBytes = std::uint64_t{4} << 20;

/// Of the directory of a compound file.
inline constexpr std::uint64_t maximumCompoundDirectoryBytes = std::uint64_t{16} << 20;

/// Of the cell records of an .xls sheet whose rows are not in order (16 bytes each while they are sorted).
inline constexpr std::size_t maximumUnorderedRecords = std::size_t{4} << 20;

}  // namespace limits

/// Throws HostError Damaged. `cause` is Spanish, begins in lower case and has no full stop.
[[noreturn]] inline void FailDamaged(const std::string& cause) {
  throw HostError(HostErrorKind::Damaged, cause);
}

/// Likewise, for a value past one of the limits: `what` as in "el texto de una celda".
[[noreturn]] inline void FailTooBig(const std::string& what) {
  FailDamaged(what + " supera el límite admitido");
}

/// Runs a step of reading; what it throws comes out with the path as its context.
template <class Step>
auto WithPath(const std::string& path, Step step) {
  try {
    return step();
  } catch (const HostError& error) {
    throw HostError(error.Kind(), error.what(), path, error.NativeCode());
  } catch (const std::bad_alloc&) {
    throw HostError(HostErrorKind::Failed, "no hay memoria suficiente", path);
  }
}

}  // namespace tolvan
