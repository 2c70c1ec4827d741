#include "fiscal/RegistryFile.h"

#include <algorithm>
#include <array>

#include "base/Text.h"

namespace tolvan {
namespace {

using namespace std::string_view_literals;

constexpr std::size_t markupLookedAt = 4U << 10;
constexpr std::size_t controlsLookedAt = 64U << 10;

struct Signature {
  std::string_view bytes;
  std::string_view kind;
};

constexpr std::array signatures{
    Signature{"\xD0\xCF\x11\xE0\xA1\xB1\x1A\xE1"sv, "un libro de Excel u otro documento de Office"sv},
    Signature{"%PDF-"sv, "un documento PDF"sv},
    Signature{"PK\3\4"sv, "un archivo comprimido"sv},
    Signature{"PK\5\6"sv, "un archivo comprimido"sv},
    Signature{"\x1F\x8B"sv, "un archivo comprimido"sv},
    Signature{"7z\xBC\xAF\x27\x1C"sv, "un archivo comprimido"sv},
    Signature{"Rar!\x1A\x07"sv, "un archivo comprimido"sv},
    Signature{"\xFF\xFE"sv, "un texto en UTF-16"sv},
    Signature{"\xFE\xFF"sv, "un texto en UTF-16"sv},
};

std::string_view MarkupKind(std::string_view beginning) {
  if (beginning.starts_with("\xEF\xBB\xBF"sv)) beginning.remove_prefix(3);
  const std::size_t first = beginning.find_first_not_of(" \t\r\n"sv);
  if (first == std::string_view::npos || beginning[first] != '<') return {};
  const std::string_view text = beginning.substr(first, markupLookedAt);
  for (const std::string_view element : {"<!doctype html"sv, "<html"sv, "<head"sv, "<body"sv, "<table"sv, "<script"sv})
    if (ContainsIgnoringCase(text, element)) return "una página web"sv;
  return text.starts_with("<?xml"sv) ? "un documento XML"sv : std::string_view();
}

/// A stray control character, a NUL in a name too, is one line's fault. In what is no text they are many.
bool IsFullOfControls(std::string_view beginning) {
  constexpr std::ptrdiff_t fewest = 16;
  constexpr std::ptrdiff_t oneIn = 20;
  const std::string_view text = beginning.substr(0, controlsLookedAt);
  const std::ptrdiff_t controls = std::count_if(text.begin(), text.end(), [](char c) {
    return static_cast<unsigned char>(c) < 0x20 && c != '\t' && c != '\r' && c != '\n' && c != '\f';
  });
  return controls >= fewest && controls * oneIn > static_cast<std::ptrdiff_t>(text.size());
}

std::string_view WithoutCutCharacter(std::string_view text) {
  constexpr std::size_t mostFollowing = 3;
  std::size_t end = text.size();
  while (end > 0 && text.size() - end < mostFollowing && (static_cast<unsigned char>(text[end - 1]) & 0xC0U) == 0x80)
    --end;
  const bool leads = end > 0 && static_cast<unsigned char>(text[end - 1]) >= 0xC0;
  return leads ? text.substr(0, end - 1) : text;
}

constexpr std::string_view utf8Mark = "\xEF\xBB\xBF";
constexpr std::size_t provedAtOnce = 256U << 10;

[[noreturn]] void Refuse(const std::string& path, const std::string& what) {
  throw NotTheRegistry(
      "El archivo " + path + " " + what +
      "; favor seleccione el archivo de texto del registro de contribuyentes, o el .zip que lo contiene");
}

/// A name inside an archive, fit for a message.
std::string Quoted(std::string_view name) {
  constexpr std::size_t mostShown = 60;
  std::string shown(FirstCharacters(name, mostShown));
  std::replace_if(
      shown.begin(), shown.end(), [](char c) { return static_cast<unsigned char>(c) < 0x20 || c == 0x7F; }, ' ');
  return "«" + shown + (shown.size() < name.size() ? "…»" : "»");
}

/// Office and its kin keep their documents in zips of many parts.
std::string_view DocumentOf(const std::vector<std::string>& names) {
  const auto holds = [&](std::string_view beginning) {
    return std::any_of(names.begin(), names.end(),
                       [&](const std::string& name) { return name.starts_with(beginning); });
  };
  if (holds("[Content_Types].xml") && holds("xl/")) return "un libro de Excel";
  if (holds("[Content_Types].xml")) return "un documento de Office";
  return holds("META-INF/manifest.xml") && holds("content.xml") ? "un documento de OpenDocument" : std::string_view();
}

/// The place of the one file that counts. What a desktop leaves beside the files that it packs does not.
std::size_t PlaceOfText(const std::string& path, const std::vector<std::string>& names) {
  if (const std::string_view document = DocumentOf(names); !document.empty())
    Refuse(path, "es " + std::string(document));
  std::vector<std::size_t> places;
  for (std::size_t place = 0; place < names.size(); ++place)
    if (!names[place].starts_with("__MACOSX/")) places.push_back(place);
  if (places.empty()) Refuse(path, "no contiene ningún archivo");
  if (places.size() > 1) {
    Refuse(path, "contiene " + std::to_string(places.size()) + " archivos: " + Quoted(names[places[0]]) + ", " +
                     Quoted(names[places[1]]) + (places.size() > 2 ? "…" : ""));
  }
  return places.front();
}

}  // namespace

std::string_view KindOfOtherFile(std::string_view beginning) {
  for (const Signature& one : signatures)
    if (beginning.starts_with(one.bytes)) return one.kind;
  if (const std::string_view kind = MarkupKind(beginning); !kind.empty()) return kind;
  return IsFullOfControls(beginning) ? "un archivo que no es de texto"sv : std::string_view();
}

bool BeginsAsZip(std::string_view beginning) {
  return beginning.starts_with("PK\3\4"sv) || beginning.starts_with("PK\5\6"sv);
}

bool BeginsAsUtf8(std::string_view beginning) {
  const std::string_view whole = beginning.size() < registryBeginning ? beginning : WithoutCutCharacter(beginning);
  const auto isAscii = [](char c) { return static_cast<unsigned char>(c) < 0x80; };
  return !std::all_of(whole.begin(), whole.end(), isAscii) && IsValidUtf8(whole);
}

RegistryFile::RegistryFile(FileHelper& files, ArchiveReader& archives, const std::string& path,
                           const Interruption& interruption) {
  Begin(files.OpenInput(path));
  if (BeginsAsZip(Beginning())) {
    archive_ = archives.OpenArchive(path);
    const std::size_t place = PlaceOfText(path, archive_->Names());
    Begin(archive_->Open(place));
    const std::string_view other = KindOfOtherFile(Beginning());
    if (!other.empty()) Refuse(path, "contiene " + Quoted(archive_->Names()[place]) + ", que es " + std::string(other));
    OpenPacked(place, interruption);
  }
  const std::string_view other = KindOfOtherFile(Beginning());
  if (!other.empty()) Refuse(path, "es " + std::string(other));
}

void RegistryFile::Begin(std::unique_ptr<InputFile> file) {
  file_ = std::move(file);
  size_ = file_->Size();
  beginning_.resize(registryBeginning);
  beginning_.resize(file_->Read(beginning_));
  const bool marked = Beginning().starts_with(utf8Mark);
  position_ = marked ? utf8Mark.size() : 0;
  utf8_ = marked || BeginsAsUtf8(Beginning());
}

/// Reads what is begun to its end, and begins it again.
void RegistryFile::OpenPacked(std::size_t place, const Interruption& interruption) {
  std::vector<char> piece(provedAtOnce);
  std::uint64_t bytes = Beginning().size();
  for (std::size_t read = piece.size(); read == piece.size(); bytes += read) {
    if (interruption.Requested()) throw HostError(HostErrorKind::Interrupted, {});
    read = file_->Read(piece);
  }
  Begin(archive_->Open(place));
  size_ = bytes;
}

std::size_t RegistryFile::Read(std::span<char> buffer) {
  const std::size_t taken = beginning_.copy(buffer.data(), buffer.size(), position_);
  position_ += taken;
  return taken == buffer.size() ? taken : taken + file_->Read(buffer.subspan(taken));
}

}  // namespace tolvan
