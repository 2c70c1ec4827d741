#include "system/ValueFile.h"

#include <cerrno>
#include <cstdio>

#include "base/Text.h"
#include "system/posix/PosixFiles.h"
#include "system/posix/PosixPath.h"

namespace tolvan {
namespace {

constexpr std::string_view header = "tolvan-valores 1";
constexpr std::string_view endWord = "fin ";
constexpr std::string_view hexadecimalDigits = "0123456789ABCDEF";
constexpr std::string_view nameSeparators = "/=";

void AppendEscaped(std::string& text, std::string_view value, std::string_view alsoEscaped) {
  for (std::size_t position = 0; position < value.size();) {
    const std::size_t begin = position;
    const char32_t codePoint = NextCodePoint(value, position);
    const char first = value[begin];
    if (first == '\\') {
      text.append("\\\\");
    } else if (codePoint < 0x20 || codePoint == 0x7F || (codePoint >= 0xDC80 && codePoint <= 0xDCFF) ||
               alsoEscaped.find(first) != std::string_view::npos) {
      const auto byte = static_cast<unsigned char>(first);
      text.append("\\x") += hexadecimalDigits[byte >> 4U];
      text += hexadecimalDigits[byte & 15U];
    } else {
      text.append(value.substr(begin, position - begin));
    }
  }
}

// The byte of "xHH" at the beginning of `text`.
std::optional<char> EscapedByte(std::string_view text) {
  if (text.size() < 3 || text[0] != 'x') return std::nullopt;
  const std::size_t high = hexadecimalDigits.find(text[1]);
  const std::size_t low = hexadecimalDigits.find(text[2]);
  if (high == std::string_view::npos || low == std::string_view::npos) return std::nullopt;
  return static_cast<char>(high * 16 + low);
}

std::optional<std::string> Unescaped(std::string_view text) {
  std::string value;
  for (std::size_t position = 0; position < text.size(); ++position) {
    const char character = text[position];
    if (static_cast<unsigned char>(character) < 0x20 || character == 0x7F) return std::nullopt;
    if (character != '\\') {
      value += character;
      continue;
    }
    const std::string_view rest = text.substr(position + 1);
    if (rest.starts_with('\\')) {
      value += '\\';
      position += 1;
      continue;
    }
    const std::optional<char> byte = EscapedByte(rest);
    if (!byte) return std::nullopt;
    value += *byte;
    position += 3;
  }
  return value;
}

bool AddEntry(NamedValues& values, std::string_view line) {
  const std::size_t equals = line.find('=');
  if (equals == std::string_view::npos) return false;
  const std::size_t slash = line.substr(0, equals).find('/');
  if (slash == std::string_view::npos) return false;
  std::optional<std::string> section = Unescaped(line.substr(0, slash));
  std::optional<std::string> key = Unescaped(line.substr(slash + 1, equals - slash - 1));
  std::optional<std::string> value = Unescaped(line.substr(equals + 1));
  if (!section || !key || !value) return false;
  return values.emplace(ValueName(std::move(*section), std::move(*key)), std::move(*value)).second;
}

std::string TimeStamp(const DateTime& moment) {
  std::string stamp = moment.ToIsoText('-');
  std::erase_if(stamp, [position = 0](char character) mutable {
    // Only the "-" between the halves stays.
    return position++ != 10 && (character == '-' || character == ':');
  });
  return stamp;
}

}  // namespace

std::string WriteKeyValueText(const NamedValues& values) {
  std::string text(header);
  text += '\n';
  for (const auto& [name, value] : values) {
    AppendEscaped(text, name.first, nameSeparators);
    text += '/';
    AppendEscaped(text, name.second, nameSeparators);
    text += '=';
    AppendEscaped(text, value, {});
    text += '\n';
  }
  return text.append(endWord).append(std::to_string(values.size())) + '\n';
}

std::optional<NamedValues> ParseKeyValueText(std::string_view text) {
  if (!text.ends_with('\n') || !IsValidUtf8(text)) return std::nullopt;
  text.remove_suffix(1);
  const std::vector<std::string_view> lines = Split(text, '\n');
  if (lines.size() < 2 || lines.front() != header) return std::nullopt;
  NamedValues values;
  for (std::size_t index = 1; index + 1 < lines.size(); ++index) {
    if (!AddEntry(values, lines[index])) return std::nullopt;
  }
  const std::string expectedEnd = std::string(endWord) + std::to_string(values.size());
  if (lines.back() != expectedEnd) return std::nullopt;
  return values;
}

ValueFile::ValueFile(Clock& clock, std::string path, const Interruption* interruption, std::chrono::milliseconds wait)
    : clock_(clock), path_(std::move(path)), interruption_(interruption), wait_(wait) {}

ValueFile::Content ValueFile::Read() {
  if (std::optional<NamedValues> values = ReadOnce()) return {std::move(*values), false, {}};
  try {
    const FileLock lock(LockPath(), wait_, interruption_);
    // Another program may have put it aside, and even written a new one, since this one looked.
    if (std::optional<NamedValues> values = ReadOnce()) return {std::move(*values), false, {}};
    return {{}, true, PutAside()};
  } catch (const HostError&) {
    // A folder that cannot be written, or a program that keeps the lock: the file stays where it is.
    return {{}, true, {}};
  }
}

NamedValues ValueFile::Change(const std::function<void(NamedValues&)>& change, const NamedValues& fallback) {
  files_.MakeFolder(FolderOf(path_));
  const FileLock lock(LockPath(), wait_, interruption_);
  const std::optional<NamedValues> stored = ReadOnce();
  if (!stored && PutAside().empty()) throw HostError(HostErrorKind::Damaged, "no se puede apartar el archivo", path_);
  NamedValues values = stored ? *stored : fallback;
  change(values);
  if (!stored || values != *stored) Write(values);
  return values;
}

std::optional<NamedValues> ValueFile::ReadOnce() {
  constexpr std::uint64_t mostBytes = 16U << 20;
  try {
    const std::unique_ptr<InputFile> file = files_.OpenInput(path_);
    if (file->Size() > mostBytes) return std::nullopt;
    std::string text(static_cast<std::size_t>(file->Size()), '\0');
    if (file->Read(text) != text.size()) return std::nullopt;
    return ParseKeyValueText(text);
  } catch (const HostError& error) {
    if (error.NativeCode() == ENOENT || error.NativeCode() == ENOTDIR) return NamedValues();
    throw;
  }
}

std::string ValueFile::PutAside() {
  const std::string base = path_ + ".danado-" + TimeStamp(clock_.Now());
  std::string aside = base;
  for (int number = 2; files_.FileExists(aside); ++number) aside = base + "-" + std::to_string(number);
  return ::rename(path_.c_str(), aside.c_str()) == 0 ? aside : std::string();
}

void ValueFile::Write(const NamedValues& values) {
  const std::unique_ptr<WholeFile> file = files_.CreateWhole(path_);
  file->Write(WriteKeyValueText(values));
  file->Commit();
}

}  // namespace tolvan
