#include "fiscal/RegistryLines.h"

#include <algorithm>
#include <cstring>
#include <utility>

#include "base/Text.h"

namespace tolvan {
namespace {

std::string_view WithoutReturn(std::string_view line) {
  if (line.ends_with('\r')) line.remove_suffix(1);
  return line;
}

void SetWhole(RegistryLine& line, std::string_view text) {
  line = {.text = text, .length = text.size(), .separatorBeyond = false};
}

constexpr std::size_t longestCharacter = 4;  // bytes of one character in UTF-8

bool IsAscii(std::string_view text) {
  return std::all_of(text.begin(), text.end(), [](char c) { return static_cast<unsigned char>(c) < 0x80; });
}

}  // namespace

RegistryLineReader::RegistryLineReader(InputFile& file, const Interruption& interruption, std::size_t bufferSize)
    : file_(file), interruption_(interruption), buffer_(bufferSize) {}

bool RegistryLineReader::Next(RegistryLine& line) {
  std::size_t searched = 0;
  for (;;) {
    const std::string_view unread = Unread();
    const std::size_t end = unread.find('\n', searched);
    if (end != std::string_view::npos) {
      SetWhole(line, WithoutReturn(unread.substr(0, end)));
      position_ += end + 1;
      return true;
    }
    if (atEnd_) return LastLine(line);
    if (unread.size() == buffer_.size()) {
      LongLine(line);
      return true;
    }
    searched = unread.size();
    Refill();
  }
}

/// Moves what is unread to the buffer's beginning and fills the rest.
void RegistryLineReader::Refill() {
  const std::size_t kept = filled_ - position_;
  std::memmove(buffer_.data(), buffer_.data() + position_, kept);
  position_ = 0;
  const std::size_t room = buffer_.size() - kept;
  const std::size_t read = file_.Read({buffer_.data() + kept, room});
  filled_ = kept + read;
  atEnd_ = read < room;
}

bool RegistryLineReader::LastLine(RegistryLine& line) {
  const std::string_view unread = Unread();
  position_ = filled_;
  if (unread.empty()) return false;
  SetWhole(line, WithoutReturn(unread));
  return true;
}

/// The buffer is full of one line: its beginning stays there while the rest is read past in the other buffer, which
/// then becomes the one that is read from.
void RegistryLineReader::LongLine(RegistryLine& line) {
  line = {.text = Unread(), .length = filled_, .separatorBeyond = false};
  other_.resize(buffer_.size());
  bool returnLast = line.text.ends_with('\r');
  std::size_t end = std::string_view::npos;
  do {
    if (interruption_.Requested()) throw HostError(HostErrorKind::Interrupted, {});
    filled_ = file_.Read(other_);
    atEnd_ = filled_ < other_.size();
    const std::string_view block(other_.data(), filled_);
    end = block.find('\n');
    const std::string_view piece = block.substr(0, end);
    line.separatorBeyond = line.separatorBeyond || piece.find('|') != std::string_view::npos;
    line.length += piece.size();
    if (!piece.empty()) returnLast = piece.ends_with('\r');
  } while (end == std::string_view::npos && !atEnd_);
  if (returnLast) --line.length;
  if (line.length < line.text.size()) line.text.remove_suffix(1);
  position_ = end == std::string_view::npos ? filled_ : end + 1;
  std::swap(buffer_, other_);
}

RegistryFields CutRegistryLine(const RegistryLine& line) {
  RegistryFields fields;
  const std::size_t first = line.text.find('|');
  if (first == std::string_view::npos) {
    if (line.separatorBeyond) fields.kind = FieldsKind::EndlessFirst;
    return fields;
  }
  fields.kind = FieldsKind::Two;
  fields.identifier = line.text.substr(0, first);
  const std::string_view rest = line.text.substr(first + 1);
  fields.name = rest.substr(0, rest.find('|'));
  return fields;
}

void AppendCharacters(std::string& text, std::string_view bytes, std::size_t count, bool utf8) {
  const std::string_view single = bytes.substr(0, count);
  if (IsAscii(single)) {
    text += single;
    return;
  }
  if (utf8) {
    const std::string_view characters = FirstCharacters(bytes.substr(0, count * longestCharacter), count);
    if (IsValidUtf8(characters)) {
      text += characters;
      return;
    }
  }
  text += FromWindows1252(single);
}

}  // namespace tolvan
