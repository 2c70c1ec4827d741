#include "spreadsheet/Biff.h"

#include <algorithm>
#include <cstring>
#include <optional>
#include <vector>

#include "base/Text.h"
#include "spreadsheet/WorkbookLimits.h"

namespace tolvan {
namespace {

constexpr std::size_t jumpBytes = std::size_t{4} << 10;
constexpr std::size_t bufferBytes = std::size_t{256} << 10;  // holds the longest record, 64 KB, several times

constexpr unsigned wideFlag = 0x01;
constexpr unsigned phoneticFlag = 0x04;
constexpr unsigned richFlag = 0x08;
constexpr std::uint64_t bytesPerRun = 4;

bool IsAscii(unsigned char byte) {
  return byte != 0 && byte < 0x80;
}

constexpr std::uint16_t versionBiff8 = 0x0600;
constexpr std::uint16_t contentGlobals = 0x0005;
constexpr unsigned char typeWorksheet = 0;

void CheckBegin(const BiffRecord& record) {
  if (record.kind != biff::beginOfStream || !record.Holds(4))
    FailDamaged("el libro no comienza como un libro de Excel");
  if (ReadU16(record.content.data()) != versionBiff8)
    FailDamaged("el libro es de una versión de Excel anterior a la 97; guárdelo de nuevo como .xls o .xlsx");
  if (ReadU16(record.content.data() + 2) != contentGlobals) FailDamaged("el libro no comienza como un libro de Excel");
}

void ReadSharedStrings(BiffRecords& records, const BiffRecord& record, SharedStrings& strings) {
  BiffText reader(records, record, 0);
  reader.ReadNumber32();  // how many cells use them
  const std::uint32_t count = reader.ReadNumber32();
  for (std::uint32_t i = 0; i < count; ++i) strings.Add(reader.ReadText());
}

/// Collects the tables of a workbook from its records.
struct Tables {
  BiffRecords& records;
  BiffWorkbook& workbook;
  std::optional<std::uint64_t> firstSheet;
  std::size_t sheets = 0;
  std::vector<std::uint32_t> cellFormats;  // their number formats may be defined after them

  void Take(const BiffRecord& record);
  void TakeSheet(const BiffRecord& record);
  void TakeNumberFormat(const BiffRecord& record);
};

void Tables::TakeSheet(const BiffRecord& record) {
  if (++sheets > limits::maximumListEntries) FailTooBig("la cantidad de hojas");
  if (!firstSheet && record.Holds(6) && record.content[5] == typeWorksheet) firstSheet = ReadU32(record.content.data());
}

void Tables::TakeNumberFormat(const BiffRecord& record) {
  if (!record.Holds(5)) return;
  const std::uint32_t formatId = ReadU16(record.content.data());
  workbook.formats.DefineFormat(formatId, BiffText(records, record, 2).ReadText());
}

void Tables::Take(const BiffRecord& record) {
  switch (record.kind) {
    case biff::filePassword:
      FailDamaged("el libro está protegido con contraseña");
    case biff::date1904:
      workbook.from1904 = record.Holds(2) && ReadU16(record.content.data()) == 1;
      break;
    case biff::boundSheet:
      TakeSheet(record);
      break;
    case biff::sharedStringTable:
      ReadSharedStrings(records, record, workbook.strings);
      break;
    case biff::numberFormat:
      TakeNumberFormat(record);
      break;
    case biff::extendedFormat:
      if (cellFormats.size() >= limits::maximumListEntries) FailTooBig("la cantidad de formatos");
      cellFormats.push_back(record.Holds(4) ? ReadU16(record.content.data() + 2) : 0U);
      break;
    default:
      break;
  }
}

}  // namespace

BiffRecords::BiffRecords(CompoundStream stream, const Interruption& interruption)
    : stream_(std::move(stream)), interruption_(interruption), buffer_(bufferBytes) {}

bool BiffRecords::Fetch(std::size_t bytes) {
  if (Have() >= bytes) return true;
  if (interruption_.Requested()) throw HostError(HostErrorKind::Interrupted, "");
  std::memmove(buffer_.data(), buffer_.data() + begin_, Have());
  end_ = Have();
  begin_ = 0;
  const std::size_t wanted = jumping_ ? std::max(jumpBytes, bytes) : buffer_.size();
  end_ += stream_.ReadAt(position_ + end_, std::span(buffer_).first(wanted).subspan(end_));
  return Have() >= bytes;
}

void BiffRecords::FetchRecord() {
  if (!Fetch(headBytes) || !Fetch(headBytes + ReadU16(Data() + 2))) FailDamaged("el libro está truncado");
}

std::uint16_t BiffRecords::PeekKind() {
  return Fetch(headBytes) ? ReadU16(Data()) : std::uint16_t{0};
}

void BiffRecords::GoTo(std::uint64_t position, bool jumping) {
  jumping_ = jumping;
  const std::uint64_t bufferStart = position_ - begin_;
  if (position >= bufferStart && position <= bufferStart + end_) {
    begin_ = static_cast<std::size_t>(position - bufferStart);
  } else {
    begin_ = end_ = 0;
  }
  position_ = position;
}

BiffText::BiffText(BiffRecords& records, const BiffRecord& record, std::size_t skipped) : records_(records) {
  if (!record.Holds(skipped)) FailDamaged("un registro del libro es demasiado corto");
  rest_ = record.content.subspan(skipped);
}

void BiffText::NextRecord() {
  if (records_.PeekKind() != biff::continued) FailDamaged("un texto del libro está truncado");
  rest_ = records_.Next().content;
}

std::uint8_t BiffText::ReadByte() {
  while (rest_.empty()) NextRecord();
  const std::uint8_t byte = rest_.front();
  rest_ = rest_.subspan(1);
  return byte;
}

std::uint16_t BiffText::ReadNumber16() {
  const std::uint8_t low = ReadByte();
  return static_cast<std::uint16_t>(low | ReadByte() << 8);
}

std::uint32_t BiffText::ReadNumber32() {
  const std::uint32_t low = ReadNumber16();
  return low | std::uint32_t{ReadNumber16()} << 16;
}

void BiffText::Skip(std::uint64_t count) {
  while (count > rest_.size()) {
    count -= rest_.size();
    NextRecord();
  }
  rest_ = rest_.subspan(static_cast<std::size_t>(count));
}

void BiffText::AppendUnit(std::uint16_t unit) {
  const bool low = unit >= 0xDC00 && unit <= 0xDFFF;
  if (highHalf_ != 0 && low) {
    AppendCodePoint(text_, 0x10000 + (static_cast<char32_t>(highHalf_ - 0xD800) << 10) + (unit - 0xDC00U));
    highHalf_ = 0;
    return;
  }
  if (highHalf_ != 0) AppendCodePoint(text_, 0xFFFD);
  highHalf_ = unit >= 0xD800 && unit <= 0xDBFF ? unit : std::uint16_t{0};
  if (highHalf_ == 0 && unit != 0) AppendCodePoint(text_, unit);
}

std::size_t BiffText::AppendCharacters(std::size_t count, bool wide) {
  const std::size_t width = wide ? 2 : 1;
  const std::size_t taken = std::min(count, rest_.size() / width);
  for (std::size_t i = 0; i < taken; ++i) {
    if (!wide && highHalf_ == 0) {
      const auto begin = rest_.begin() + static_cast<std::ptrdiff_t>(i);
      const auto end = std::find_if_not(begin, rest_.begin() + static_cast<std::ptrdiff_t>(taken), IsAscii);
      text_.append(begin, end);
      i = static_cast<std::size_t>(end - rest_.begin());
      if (i == taken) break;
    }
    AppendUnit(wide ? ReadU16(&rest_[2 * i]) : rest_[i]);
  }
  rest_ = rest_.subspan(taken * width);
  return taken;
}

void BiffText::ReadCharacters(std::size_t count, bool wide) {
  text_.clear();
  highHalf_ = 0;
  for (;;) {
    count -= AppendCharacters(count, wide);
    if (count == 0) break;
    if (!rest_.empty()) FailDamaged("un texto del libro está cortado en medio de un carácter");
    NextRecord();
    wide = (ReadByte() & wideFlag) != 0;
  }
  if (highHalf_ != 0) AppendCodePoint(text_, 0xFFFD);
}

const std::string& BiffText::ReadText() {
  const std::size_t count = ReadNumber16();
  const unsigned flags = ReadByte();
  const std::uint64_t runs = (flags & richFlag) != 0 ? ReadNumber16() : 0;
  const std::uint64_t phonetic = (flags & phoneticFlag) != 0 ? ReadNumber32() : 0;
  ReadCharacters(count, (flags & wideFlag) != 0);
  Skip(runs * bytesPerRun + phonetic);
  return text_;
}

void ReadBiffWorkbook(BiffRecords& records, BiffWorkbook& workbook) {
  CheckBegin(records.Next());
  Tables tables{records, workbook, std::nullopt, 0, {}};
  for (BiffRecord record = records.Next(); record.kind != biff::endOfStream; record = records.Next())
    tables.Take(record);
  for (const std::uint32_t formatId : tables.cellFormats) workbook.formats.AddCellFormat(formatId);
  if (!tables.firstSheet) FailDamaged("el libro no tiene ninguna hoja de cálculo");
  workbook.sheetPosition = *tables.firstSheet;
}

}  // namespace tolvan
