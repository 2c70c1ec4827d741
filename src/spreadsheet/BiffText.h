// Texts of BIFF8 records: 8- or 16-bit characters, possibly with formatting and phonetic data behind them, possibly cut
// by the end of a record, in which case a CONTINUE record goes on and says anew how wide its characters are.
#pragma once

#include <cstdint>
#include <string>

#include "spreadsheet/BiffRecords.h"
#include "spreadsheet/SharedStrings.h"

namespace tolvan {

class BiffText {
 public:
  /// Begins `skipped` bytes inside `record`, the last one that `records` gave. Throws HostError Damaged when the record
  /// is shorter.
  BiffText(BiffRecords& records, const BiffRecord& record, std::size_t skipped);

  std::uint32_t ReadNumber32();

  /// A text whose length is two bytes, with what stands behind it; UTF-8 without NUL, valid until the next call. Throws
  /// HostError Damaged when it does not end where it should.
  const std::string& ReadText();

 private:
  std::uint8_t ReadByte();
  std::uint16_t ReadNumber16();
  void ReadCharacters(std::size_t count, bool wide);
  std::size_t AppendCharacters(std::size_t count, bool wide);
  void AppendUnit(std::uint16_t unit);
  void Skip(std::uint64_t count);
  void NextRecord();

  BiffRecords& records_;
  std::span<const unsigned char> rest_;
  std::string text_;
  std::uint16_t highHalf_ = 0;  // of a pair whose other half is still to come
};

/// Reads the table of shared strings; `record` is its first record.
void ReadSharedStrings(BiffRecords& records, const BiffRecord& record, SharedStrings& strings);

}  // namespace tolvan
