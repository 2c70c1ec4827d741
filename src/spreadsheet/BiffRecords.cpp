#include "spreadsheet/BiffRecords.h"

#include <algorithm>
#include <cstring>

#include "spreadsheet/WorkbookFailure.h"

namespace tolvan {
namespace {

constexpr std::size_t jumpBytes = std::size_t{4} << 10;
constexpr std::size_t bufferBytes = std::size_t{256} << 10;  // holds the longest record, 64 KB, several times

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

}  // namespace tolvan
