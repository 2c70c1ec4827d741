#include "system/posix/SettingsLocation.h"

#include <array>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <filesystem>

#include "host/HostError.h"
#include "system/posix/PosixPath.h"

namespace tolvan {
namespace {

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
