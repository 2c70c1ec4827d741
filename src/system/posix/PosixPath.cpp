#include "system/posix/PosixPath.h"

#include <pwd.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>

#include "base/Text.h"
#include "system/posix/SystemFailure.h"

namespace tolvan {
namespace {

bool IsLetter(char character) {
  return (character >= 'A' && character <= 'Z') || (character >= 'a' && character <= 'z');
}

}  // namespace

bool IsWindowsPath(std::string_view path) {
  if (path.starts_with("\\\\")) return true;
  return path.size() >= 2 && IsLetter(path[0]) && path[1] == ':';
}

std::string Collapsed(std::string_view absolutePath) {
  std::string collapsed;
  for (const std::string_view part : Split(absolutePath, '/')) {
    if (part.empty() || part == ".") continue;
    collapsed.append("/").append(part);
  }
  return collapsed.empty() ? "/" : collapsed;
}

std::string ResolvePath(std::string_view path, std::string_view base) {
  if (path.find('\0') != std::string_view::npos) {
    throw HostError(HostErrorKind::InvalidValue, "la ruta contiene un carácter nulo");
  }
  if (IsWindowsPath(path)) {
    throw HostError(HostErrorKind::Unreachable, "es una ruta de Windows; en este equipo no existe", std::string(path));
  }
  if (path.starts_with('/')) return Collapsed(path);
  return Collapsed(std::string(base) + "/" + ReplaceAll(path, "\\", "/"));
}

std::string FolderOf(std::string_view absolutePath) {
  const std::size_t separator = absolutePath.rfind('/');
  return separator == 0 || separator == std::string_view::npos ? "/" : std::string(absolutePath.substr(0, separator));
}

std::string_view NameOf(std::string_view absolutePath) {
  return absolutePath.substr(absolutePath.rfind('/') + 1);
}

bool AreOneFile(const std::string& path, const std::string& other) {
  struct stat one {};
  struct stat two {};
  if (::stat(path.c_str(), &one) != 0 || ::stat(other.c_str(), &two) != 0) return false;
  return one.st_dev == two.st_dev && one.st_ino == two.st_ino;
}

bool IsReadableByEverybody(const std::string& path) {
  struct stat status {};
  return ::stat(path.c_str(), &status) == 0 && (status.st_mode & S_IROTH) != 0;
}

std::string HomeFolder() {
  const char* home = std::getenv("HOME");
  if (home == nullptr || *home != '/') {
    const passwd* user = ::getpwuid(::geteuid());
    home = user == nullptr ? nullptr : user->pw_dir;
  }
  if (home == nullptr || *home != '/') return {};
  std::string folder = Collapsed(home);
  return folder == "/" ? std::string() : folder;
}

std::string CanonicalPath(const std::string& absolutePath) {
  std::error_code error;
  const std::filesystem::path canonical = std::filesystem::weakly_canonical(absolutePath, error);
  if (error) throw SystemFailure(error.value(), absolutePath);
  return Collapsed(canonical.native());
}

}  // namespace tolvan
