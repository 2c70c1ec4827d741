// The records of an .xls: a two-byte kind, a two-byte length, then the content (MS-XLS, BIFF8).
#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "host/UserInterface.h"
#include "spreadsheet/CompoundFile.h"
#include "spreadsheet/LittleEndian.h"

namespace tolvan {

/// The kinds that the reader knows.
namespace biff {
inline constexpr std::uint16_t formula = 0x0006;
inline constexpr std::uint16_t endOfStream = 0x000A;
inline constexpr std::uint16_t date1904 = 0x0022;
inline constexpr std::uint16_t filePassword = 0x002F;
inline constexpr std::uint16_t continued = 0x003C;
inline constexpr std::uint16_t boundSheet = 0x0085;
inline constexpr std::uint16_t multipleRk = 0x00BD;
inline constexpr std::uint16_t richText = 0x00D6;
inline constexpr std::uint16_t extendedFormat = 0x00E0;
inline constexpr std::uint16_t sharedStringTable = 0x00FC;
inline constexpr std::uint16_t sharedText = 0x00FD;
inline constexpr std::uint16_t number = 0x0203;
inline constexpr std::uint16_t text = 0x0204;
inline constexpr std::uint16_t booleanOrError = 0x0205;
inline constexpr std::uint16_t formula3 = 0x0206;  // the number of the version 3, by some writers of BIFF8 too
inline constexpr std::uint16_t formulaText = 0x0207;
inline constexpr std::uint16_t arrayFormula = 0x0221;
inline constexpr std::uint16_t dataTable = 0x0236;
inline constexpr std::uint16_t rk = 0x027E;
inline constexpr std::uint16_t formula4 = 0x0406;  // likewise, of the version 4
inline constexpr std::uint16_t numberFormat = 0x041E;
inline constexpr std::uint16_t sharedFormula = 0x04BC;
inline constexpr std::uint16_t beginOfStream = 0x0809;
}  // namespace biff

struct BiffRecord {
  std::uint16_t kind = 0;
  std::uint64_t position = 0;              ///< of its first byte in the stream
  std::span<const unsigned char> content;  ///< valid until the next record is read

  bool Holds(std::size_t bytes) const { return content.size() >= bytes; }
};

class BiffRecords {
 public:
  /// `interruption` must outlive the object.
  BiffRecords(CompoundStream stream, const Interruption& interruption);

  /// The record at the present position, behind which the next call goes on. Throws HostError Damaged when the stream
  /// ends before or inside it, Interrupted.
  BiffRecord Next() {
    if (Have() < headBytes || Have() < headBytes + ReadU16(Data() + 2)) FetchRecord();
    return Take();
  }

  /// The kind of the record that Next would give; 0 at the end of the stream.
  std::uint16_t PeekKind();

  /// Goes to a position to read on from there, or only the record there.
  void Seek(std::uint64_t position) { GoTo(position, false); }
  void Jump(std::uint64_t position) { GoTo(position, true); }

 private:
  static constexpr std::size_t headBytes = 4;

  std::size_t Have() const { return end_ - begin_; }
  const unsigned char* Data() const { return reinterpret_cast<const unsigned char*>(buffer_.data()) + begin_; }
  BiffRecord Take() {
    const unsigned char* record = Data();
    const std::size_t length = ReadU16(record + 2);
    const BiffRecord taken{ReadU16(record), position_, {record + headBytes, length}};
    begin_ += headBytes + length;
    position_ += headBytes + length;
    return taken;
  }
  bool Fetch(std::size_t bytes);
  void FetchRecord();
  void GoTo(std::uint64_t position, bool jumping);

  CompoundStream stream_;
  const Interruption& interruption_;
  std::vector<char> buffer_;
  std::size_t begin_ = 0;  // what is not yet read of the buffer
  std::size_t end_ = 0;
  std::uint64_t position_ = 0;  // of buffer_[begin_] in the stream
  bool jumping_ = false;        // little is read ahead
};

}  // namespace tolvan
