#include "system/ValueFile.h"

#include <cerrno>
#include <cstdio>

#include "system/posix/FileLock.h"
#include "system/posix/PosixPath.h"

namespace tolvan {
namespace {

std::string TimeStamp(const DateTime& moment) {
  std::string stamp = moment.ToIsoText('-');
  std::erase_if(stamp, [position = 0](char character) mutable {
    // Only the "-" between the halves stays.
    return position++ != 10 && (character == '-' || character == ':');
  });
  return stamp;
}

}  // namespace

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
