#include "spreadsheet/BiffText.h"

#include <algorithm>

#include "base/Text.h"
#include "spreadsheet/LittleEndian.h"
#include "spreadsheet/WorkbookFailure.h"

namespace tolvan {
namespace {

constexpr unsigned wideFlag = 0x01;
constexpr unsigned phoneticFlag = 0x04;
constexpr unsigned richFlag = 0x08;
constexpr std::uint64_t bytesPerRun = 4;

bool IsAscii(unsigned char byte) {
  return byte != 0 && byte < 0x80;
}

}  // namespace

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

void ReadSharedStrings(BiffRecords& records, const BiffRecord& record, SharedStrings& strings) {
  BiffText reader(records, record, 0);
  reader.ReadNumber32();  // how many cells use them
  const std::uint32_t count = reader.ReadNumber32();
  for (std::uint32_t i = 0; i < count; ++i) strings.Add(reader.ReadText());
}

}  // namespace tolvan
