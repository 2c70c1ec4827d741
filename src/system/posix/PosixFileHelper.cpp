#include "system/posix/PosixFileHelper.h"

#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <filesystem>

#include "base/Text.h"
#include "system/posix/PosixFiles.h"
#include "system/posix/PosixPath.h"

namespace tolvan {
namespace {

bool IsThatFile(const std::string& path, const std::string& guarded) {
  if (AreOneFile(path, guarded)) return true;
  return NameOf(path) == NameOf(guarded) && AreOneFile(FolderOf(path), FolderOf(guarded));
}

bool IsForbidden(char32_t codePoint) {
  constexpr std::u32string_view forbidden = U"\\/:*?\"<>|";
  const bool isControl = codePoint < 0x20 || (codePoint >= 0x7F && codePoint < 0xA0);
  return isControl || forbidden.find(codePoint) != std::u32string_view::npos;
}

std::string WithoutForbidden(std::string_view name) {
  std::string clean;
  for (std::size_t position = 0; position < name.size();) {
    const std::size_t begin = position;
    if (IsForbidden(NextCodePoint(name, position))) {
      clean += '_';
    } else {
      clean.append(name.substr(begin, position - begin));
    }
  }
  return clean;
}

std::string_view WithoutBlanksAndEndPoints(std::string_view name) {
  name = TrimBlanks(name);
  const std::size_t last = name.find_last_not_of(". ");
  return last == std::string_view::npos ? std::string_view() : name.substr(0, last + 1);
}

std::string WithSeparator(std::string folder, char separator) {
  while (!folder.empty() && folder.back() == separator) folder.pop_back();
  return folder + separator;
}

std::optional<struct stat> StatusOf(const std::string& path) {
  struct stat status {};
  if (::stat(path.c_str(), &status) != 0) return std::nullopt;
  return status;
}

}  // namespace

bool FileGuard::Holds(const std::string& path) const {
  return std::ranges::any_of(files_, [&](const std::string& file) { return IsThatFile(path, file); }) ||
         std::ranges::any_of(marks_, [&](const Mark& mark) { return IsMarked(path, mark); });
}

bool FileGuard::IsMarked(const std::string& path, const Mark& mark) {
  const auto hasMark = [&](std::string_view name) { return name.find(mark.text) != std::string_view::npos; };
  if (hasMark(NameOf(path)) && AreOneFile(FolderOf(path), mark.folder)) return true;
  std::error_code failure;
  for (std::filesystem::directory_iterator entry(mark.folder, failure), end; !failure && entry != end;
       entry.increment(failure)) {
    if (hasMark(entry->path().filename().native()) && AreOneFile(path, entry->path().native())) return true;
  }
  const int code = failure.value();  // a folder that is not there holds nothing
  if (code != 0 && code != ENOENT && code != ENOTDIR) throw SystemFailure(code, mark.folder);
  return false;
}

PosixFileHelper::PosixFileHelper(std::string_view applicationFolder, FileGuard guard)
    : applicationFolder_(Collapsed(applicationFolder)), guard_(std::move(guard)) {}

std::string PosixFileHelper::Resolve(std::string_view path) const {
  return ResolvePath(path, applicationFolder_);
}

std::string PosixFileHelper::ResolveForChange(std::string_view path) const {
  // A name that ends in a separator means a folder; collapsed, it would become the name of a file.
  if (path.empty() || path.ends_with('/')) throw SystemFailure(EISDIR, path);
  std::string resolved = Resolve(path);
  if (!IsGuarded(resolved)) return resolved;
  throw HostError(HostErrorKind::Access,
                  "es un archivo propio de la tienda (su base de datos, su configuración o sus ajustes) y no se "
                  "reemplaza ni se borra",
                  resolved);
}

bool PosixFileHelper::IsGuarded(const std::string& resolved) const {
  try {
    return guard_.Holds(resolved);
  } catch (const HostError& error) {
    if (error.Context() == resolved) throw;
    throw HostError(error.Kind(),
                    "no se pudo comprobar que no sea un archivo propio de la tienda («" + error.Context() +
                        "»: " + error.what() + ")",
                    resolved, error.NativeCode());
  }
}

std::string PosixFileHelper::NormalizeFolder(std::string_view folder) const {
  if (IsWindowsPath(folder)) return WithSeparator(std::string(folder), folder.back() == '/' ? '/' : '\\');
  return WithSeparator(Resolve(folder), '/');
}

std::string PosixFileHelper::Join(std::string_view folder, std::string_view name) const {
  if (IsWindowsPath(folder)) return NormalizeFolder(folder).append(name);
  std::string below = ReplaceAll(name, "\\", "/");
  below.erase(0, below.find_first_not_of('/'));
  return NormalizeFolder(folder) + below;
}

std::string PosixFileHelper::FormatForDisplay(std::string_view path) const {
  if (path.empty() || IsWindowsPath(path)) return std::string(path);
  const std::string shown = Resolve(path);
  const std::string home = HomeFolder();
  if (home.empty() || !shown.starts_with(home)) return shown;
  const std::string below = shown.substr(home.size());
  return below.empty() || below.starts_with('/') ? "~" + below : shown;
}

std::string PosixFileHelper::CleanFileName(std::string_view name, bool replaceForbidden, bool trim) const {
  const std::string clean = replaceForbidden ? WithoutForbidden(name) : std::string(name);
  return std::string(trim ? WithoutBlanksAndEndPoints(clean) : clean);
}

bool PosixFileHelper::FileExists(std::string_view path) const {
  if (path.empty() || IsWindowsPath(path)) return false;
  const auto status = StatusOf(Resolve(path));
  return status && S_ISREG(status->st_mode);
}

bool PosixFileHelper::FolderExists(std::string_view path) const {
  if (IsWindowsPath(path)) return false;
  const auto status = StatusOf(Resolve(path));
  return status && S_ISDIR(status->st_mode);
}

bool PosixFileHelper::IsSameFile(std::string_view path, std::string_view other) const {
  return AreOneFile(Resolve(path), Resolve(other));
}

void PosixFileHelper::MakeFolder(std::string_view path) {
  const std::string folder = Resolve(path);
  for (std::size_t end = folder.find('/', 1);; end = folder.find('/', end + 1)) {
    const std::string part = folder.substr(0, end);
    const auto status = StatusOf(part);
    if (status && !S_ISDIR(status->st_mode)) throw SystemFailure(ENOTDIR, part);
    // Another program may make the same folder between the look and the call.
    if (!status && ::mkdir(part.c_str(), 0777) != 0 && errno != EEXIST) throw SystemFailure(errno, part);
    if (end == std::string::npos) return;
  }
}

bool PosixFileHelper::DeleteFile(std::string_view path) noexcept {
  try {
    return ::unlink(ResolveForChange(path).c_str()) == 0;
  } catch (const std::exception&) {
    return false;
  }
}

std::optional<HostError> PosixFileHelper::WriteTextFile(std::string_view text, std::string_view path) noexcept {
  try {
    const std::optional<std::string> bytes = ToWindows1252(text);
    if (!bytes) {
      return HostError(HostErrorKind::InvalidValue,
                       "el carácter «" + std::string(FirstBeyondWindows1252(text)) + "» no existe en Windows-1252",
                       std::string(path));
    }
    const std::unique_ptr<WholeFile> file = CreateWhole(path);
    file->Write(*bytes);
    file->Commit();
    return std::nullopt;
  } catch (const HostError& error) {
    return error;
  } catch (const std::exception&) {
    return SystemFailure(ENOMEM, path);
  }
}

std::unique_ptr<WholeFile> PosixFileHelper::CreateWhole(std::string_view path) {
  return CreateWholeFile(ResolveForChange(path));
}

std::unique_ptr<InputFile> PosixFileHelper::OpenInput(std::string_view path) {
  if (path.empty()) throw SystemFailure(ENOENT, path);
  return OpenInputFile(Resolve(path));
}

}  // namespace tolvan
