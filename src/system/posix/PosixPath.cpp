#include "system/posix/PosixPath.h"

#include <pwd.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <optional>

#include "base/Text.h"
#include "host/HostError.h"
#include "system/posix/PosixFiles.h"

namespace tolvan {
namespace {

bool IsLetter(char character) {
  return (character >= 'A' && character <= 'Z') || (character >= 'a' && character <= 'z');
}

// Nothing when nothing is there.
std::optional<struct stat> StatusIfThere(const std::string& path) {
  struct stat status {};
  if (::stat(path.c_str(), &status) == 0) return status;
  if (errno == ENOENT || errno == ENOTDIR) return std::nullopt;
  throw SystemFailure(errno, path);
}

bool StandsAsItIs(char character) {
  return (character >= 'a' && character <= 'z') || (character >= 'A' && character <= 'Z') ||
         (character >= '0' && character <= '9') || character == '.' || character == '-' || character == '_';
}

template <class... Values>
std::string Formatted(const char* format, Values... values) {
  std::array<char, 32> buffer{};
  std::snprintf(buffer.data(), buffer.size(), format, values...);
  return buffer.data();
}

// FNV-1a, 64 bits.
std::uint64_t HashOf(std::string_view text) {
  std::uint64_t hash = 0xCBF29CE484222325U;
  for (const char character : text) hash = (hash ^ static_cast<unsigned char>(character)) * 0x100000001B3U;
  return hash;
}

std::string NameMadeOf(std::string_view path) {
  constexpr std::size_t longest = 200;  // a file name holds 255 bytes, and suffixes follow
  constexpr std::size_t keptEnd = 150;
  std::string name;
  for (const char character : path) {
    if (character == '/') {
      name += '+';
    } else if (StandsAsItIs(character) && !(name.empty() && character == '.')) {  // a leading point would hide the file
      name += character;
    } else {
      name += Formatted("%%%02X", static_cast<unsigned>(static_cast<unsigned char>(character)));
    }
  }
  if (name.size() <= longest) return name;
  return Formatted("%016llX", static_cast<unsigned long long>(HashOf(path))) + "~" + name.substr(name.size() - keptEnd);
}

// One of the XDG base directories; a value that is not absolute counts as not set there.
std::string XdgFolder(const char* variable, const char* belowHome) {
  const char* value = std::getenv(variable);
  if (value != nullptr && *value == '/') return Collapsed(value);
  const std::string home = HomeFolder();
  if (home.empty()) {
    throw HostError(HostErrorKind::Configuration,
                    "no hay carpeta personal donde guardar los ajustes; indique una con «ajustes» en [host]");
  }
  return home + "/" + belowHome;
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
  const auto one = StatusIfThere(path);
  const auto two = StatusIfThere(other);
  return one && two && one->st_dev == two->st_dev && one->st_ino == two->st_ino;
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

SettingsLocation LocateSettings(const std::string& configurationFile, const std::string& folder) {
  const std::string canonical = CanonicalPath(configurationFile);
  if (folder.empty()) {
    const std::string name = "/tolvan/" + NameMadeOf(canonical);
    return {XdgFolder("XDG_CONFIG_HOME", ".config") + name + ".ajustes",
            XdgFolder("XDG_STATE_HOME", ".local/state") + name + ".ventanas"};
  }
  const std::string place = CanonicalPath(folder);
  const std::string relative = std::filesystem::path(canonical).lexically_relative(place).native();
  const std::string name = place + "/" + NameMadeOf(relative);
  return {name + ".ajustes", name + ".ventanas"};
}

}  // namespace tolvan
