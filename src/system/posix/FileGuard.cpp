#include "system/posix/FileGuard.h"

#include <algorithm>
#include <filesystem>

#include "system/posix/PosixPath.h"

namespace tolvan {
namespace {

bool IsThatFile(const std::string& path, const std::string& guarded) {
  if (AreOneFile(path, guarded)) return true;
  return NameOf(path) == NameOf(guarded) && AreOneFile(FolderOf(path), FolderOf(guarded));
}

}  // namespace

bool FileGuard::Holds(const std::string& path) const {
  return std::ranges::any_of(files_, [&](const std::string& file) { return IsThatFile(path, file); }) ||
         std::ranges::any_of(marks_, [&](const Mark& mark) { return IsMarked(path, mark); });
}

bool FileGuard::IsMarked(const std::string& path, const Mark& mark) {
  const auto hasMark = [&](std::string_view name) { return name.find(mark.text) != std::string_view::npos; };
  if (hasMark(NameOf(path)) && AreOneFile(FolderOf(path), mark.folder)) return true;
  std::error_code ignored;  // a folder that is not there holds nothing
  for (std::filesystem::directory_iterator entry(mark.folder, ignored), end; !ignored && entry != end;
       entry.increment(ignored)) {
    if (hasMark(entry->path().filename().native()) && AreOneFile(path, entry->path().native())) return true;
  }
  return false;
}

}  // namespace tolvan
