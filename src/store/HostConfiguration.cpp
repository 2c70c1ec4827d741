#include "store/HostConfiguration.h"

#include <algorithm>
#include <cstdlib>
#include <map>
#include <optional>
#include <vector>

#include "base/Text.h"
#include "host/HostError.h"
#include "store/ConfigurationKeys.h"

namespace tolvan {
namespace {

std::string Environment(const char* name) {
  const char* const value = std::getenv(name);
  return value == nullptr ? std::string() : value;
}

/// One "key=value" of an ODBC connection string.
bool IsPassword(std::string_view part) {
  const std::size_t equals = part.find('=');
  if (equals == std::string_view::npos || TrimBlanks(part.substr(equals + 1)).empty()) return false;
  const std::string_view key = TrimBlanks(part.substr(0, equals));
  return EqualIgnoringCase(key, "pwd") || EqualIgnoringCase(key, "password");
}

constexpr std::string_view blanks = " \t";
constexpr std::uint64_t mostBytes = 1U << 20;

std::string_view Trimmed(std::string_view text) {
  const std::size_t first = text.find_first_not_of(blanks);
  if (first == std::string_view::npos) return {};
  return text.substr(first, text.find_last_not_of(blanks) - first + 1);
}

std::string_view WithoutComment(std::string_view text) {
  for (std::size_t at = text.find(';'); at != std::string_view::npos; at = text.find(';', at + 1)) {
    if (at == 0 || blanks.find(text[at - 1]) != std::string_view::npos) return Trimmed(text.substr(0, at));
  }
  return Trimmed(text);
}

std::string Quoted(std::string_view text) {
  constexpr std::size_t shown = 60;
  return "«" + std::string(FirstCharacters(text, shown)) + (CountCharacters(text) > shown ? "…" : "") + "»";
}

bool HasControl(std::string_view line) {
  return std::any_of(line.begin(), line.end(), [](char character) {
    const auto byte = static_cast<unsigned char>(character);
    return (byte < 0x20 && character != '\t') || byte == 0x7F;
  });
}

class Reader {
 public:
  Reader(const std::string& path, std::span<const DatabaseEngine> engines) {
    configuration_.filePath = path;
    configuration_.database.known = engines;
    configuration_.database.engine = &engines.front();
  }

  HostConfiguration Read(std::string_view content);

 private:
  void ReadLine(std::string_view line);
  void ReadSection(std::string_view line);
  void ReadEntry(std::string_view line);
  void TakeValue(const ConfigurationKey& key, std::string_view value);
  void Complain(const std::string& cause);

  HostConfiguration configuration_;
  std::size_t lineNumber_ = 0;
  std::optional<std::string> section_;  // as written; nothing before the first
  bool sectionIsKnown_ = false;         // the keys of an unknown one are not complained of as well
  std::map<const ConfigurationKey*, std::size_t> lineOfKey_;
  std::vector<std::string> complaints_;
};

HostConfiguration Reader::Read(std::string_view content) {
  constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";
  if (content.starts_with(byteOrderMark)) content.remove_prefix(byteOrderMark.size());
  for (std::string_view line : Split(content, '\n')) {
    ++lineNumber_;
    if (line.ends_with('\r')) line.remove_suffix(1);
    ReadLine(line);
  }
  if (complaints_.empty()) return std::move(configuration_);
  constexpr std::size_t mostShown = 20;
  std::string text = configuration_.filePath;
  for (std::size_t index = 0; index < std::min(mostShown, complaints_.size()); ++index) {
    text.append(index == 0 ? ", " : "\r\n").append(complaints_[index]);
  }
  if (complaints_.size() > mostShown) text.append("\r\n…");
  throw HostError(HostErrorKind::Configuration, text);
}

void Reader::Complain(const std::string& cause) {
  complaints_.push_back("línea " + std::to_string(lineNumber_) + ": " + cause);
}

void Reader::ReadLine(std::string_view line) {
  if (!IsValidUtf8(line)) return Complain("no es texto UTF-8; guarde el archivo con la codificación UTF-8");
  if (HasControl(line)) return Complain("contiene un carácter de control");
  const std::string_view text = WithoutComment(Trimmed(line));
  if (text.empty()) return;
  if (text.front() == '[') {
    ReadSection(text);
  } else {
    ReadEntry(text);
  }
}

void Reader::ReadSection(std::string_view line) {
  const std::string_view name = line.ends_with(']') ? Trimmed(line.substr(1, line.size() - 2)) : std::string_view();
  const auto keys = ConfigurationKeys();
  section_ = name;
  sectionIsKnown_ = std::any_of(keys.begin(), keys.end(), [&](const auto& key) { return key.section == name; });
  if (name.empty()) return Complain("la sección " + Quoted(line) + " no está entre corchetes");
  if (!sectionIsKnown_) Complain("la sección " + Quoted(name) + " no existe");
}

void Reader::ReadEntry(std::string_view line) {
  const std::size_t equals = line.find('=');
  if (equals == std::string_view::npos) return Complain(Quoted(line) + " no es «clave = valor»");
  if (!section_) return Complain("la clave está antes de la primera sección");
  if (!sectionIsKnown_) return;
  const std::string_view name = Trimmed(line.substr(0, equals));
  const auto keys = ConfigurationKeys();
  const auto key = std::find_if(keys.begin(), keys.end(), [&](const ConfigurationKey& candidate) {
    return candidate.section == *section_ && candidate.name == name;
  });
  if (key == keys.end()) return Complain("la clave " + Quoted(name) + " no existe en [" + *section_ + "]");
  TakeValue(*key, WithoutComment(Trimmed(line.substr(equals + 1))));
}

void Reader::TakeValue(const ConfigurationKey& key, std::string_view value) {
  const auto [place, isNew] = lineOfKey_.emplace(&key, lineNumber_);
  if (!isNew) {
    return Complain("la clave " + Quoted(key.name) + " ya está en la línea " + std::to_string(place->second));
  }
  const std::optional<std::string> complaint = key.take(configuration_, value);
  if (complaint) Complain("el valor " + Quoted(value) + " de " + Quoted(key.name) + " no sirve: " + *complaint);
}

std::string EntryOf(const ConfigurationKey& key, const HostConfiguration& configuration) {
  std::string line(key.name);
  line.append(" =");
  if (const std::string value = key.write(configuration); !value.empty()) line.append(" ").append(value);
  constexpr std::size_t commentColumn = 34;
  const std::size_t length = CountCharacters(line);
  line.append(length < commentColumn ? commentColumn - length : 1, ' ');
  const auto& engines = configuration.database.known;
  const std::string explanation = ReplaceAll(key.explanation, "{motores}", NamesOf(engines));
  return line + "; " + ReplaceAll(explanation, "{motores de archivo}", NamesOf(engines, true)) + "\n";
}

}  // namespace

std::string FolderOfConfiguration(const HostConfiguration& configuration) {
  const std::size_t separator = configuration.filePath.rfind('/');
  if (separator == std::string::npos || separator == 0) return "/";
  return configuration.filePath.substr(0, separator);
}

bool HasPassword(const HostConfiguration& configuration) {
  return !configuration.mail.password.empty() ||
         std::ranges::any_of(Split(configuration.database.connection, ';'), IsPassword);
}

std::string ConfigurationOfEnvironment() {
  return Environment("TOLVAN_HOST");
}

std::string UsualConfiguration() {
  const std::string xdg = Environment("XDG_CONFIG_HOME");
  return (xdg.empty() ? Environment("HOME") + "/.config" : xdg) + "/tolvan/tolvan.ini";
}

HostConfiguration ParseHostConfiguration(std::string_view content, const std::string& path,
                                         std::span<const DatabaseEngine> engines) {
  return Reader(path, engines).Read(content);
}

HostConfiguration ReadHostConfiguration(FileHelper& files, const std::string& path,
                                        std::span<const DatabaseEngine> engines) {
  std::string content;
  try {
    const std::unique_ptr<InputFile> file = files.OpenInput(path);
    if (file->Size() > mostBytes) throw HostError(HostErrorKind::Configuration, "el archivo es demasiado grande", path);
    content.resize(static_cast<std::size_t>(file->Size()));
    content.resize(file->Read(content));
  } catch (const HostError& error) {
    throw HostError(HostErrorKind::Configuration, path + ": " + error.what(), {}, error.NativeCode());
  }
  return ParseHostConfiguration(content, path, engines);
}

std::string WriteHostConfiguration(const HostConfiguration& configuration) {
  std::string text = "; Configuración de " + configuration.product + ": importar y exportar datos.\n";
  std::string_view section;
  for (const ConfigurationKey& key : ConfigurationKeys()) {
    if (key.section != section) text.append("\n[").append(key.section).append("]\n");
    section = key.section;
    text.append(EntryOf(key, configuration));
  }
  // Reading it back is the one sure test of what a file can give.
  const HostConfiguration again = ParseHostConfiguration(text, configuration.filePath, configuration.database.known);
  for (const ConfigurationKey& key : ConfigurationKeys()) {
    if (key.write(again) == key.write(configuration)) continue;
    throw HostError(HostErrorKind::InvalidValue, "el valor de «" + std::string(key.name) + "» no cabe en el archivo");
  }
  return text;
}

}  // namespace tolvan
