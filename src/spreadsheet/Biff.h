// The content of an .xls (MS-XLS, BIFF8): its records, the texts in them, and the tables before its sheets.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <vector>

#include "host/UserInterface.h"
#include "spreadsheet/CompoundFile.h"
#include "spreadsheet/WorkbookTables.h"

namespace tolvan {

/// The kinds of record that the reader knows.
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
inline constexpr std::uint16_t formula3 = 0x0206;  // the number of version 3, which some writers of BIFF8 use too
inline constexpr std::uint16_t formulaText = 0x0207;
inline constexpr std::uint16_t arrayFormula = 0x0221;
inline constexpr std::uint16_t dataTable = 0x0236;
inline constexpr std::uint16_t rk = 0x027E;
inline constexpr std::uint16_t formula4 = 0x0406;  // likewise, of version 4
inline constexpr std::uint16_t numberFormat = 0x041E;
inline constexpr std::uint16_t sharedFormula = 0x04BC;
inline constexpr std::uint16_t beginOfStream = 0x0809;
}  // namespace biff

/// A two-byte kind, a two-byte length, then the content.
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

  /// The record at the present position; the next call goes on after it. Throws HostError Damaged when the stream
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

/// Texts of records: 8- or 16-bit characters, possibly followed by formatting and phonetic data, possibly cut by the
/// end of a record; then a CONTINUE record goes on, which states again how wide its characters are.
class BiffText {
 public:
  /// Begins `skipped` bytes inside `record`, the last one that `records` gave. Throws HostError Damaged when the record
  /// is shorter.
  BiffText(BiffRecords& records, const BiffRecord& record, std::size_t skipped);

  std::uint32_t ReadNumber32();

  /// A text whose length is two bytes, with what follows it; UTF-8 without NUL, valid until the next call. Throws
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

/// What stands before the sheets.
struct BiffWorkbook {
  SharedStrings strings;
  CellFormats formats;
  bool from1904 = false;
  std::uint64_t sheetPosition = 0;  ///< of the first worksheet in tab order
};

/// Reads from the beginning of the stream. Throws HostError Damaged for another version than BIFF8, a password, a book
/// without a worksheet.
void ReadBiffWorkbook(BiffRecords& records, BiffWorkbook& workbook);

}  // namespace tolvan
