#include "fiscal/RegistryFile.h"

#include <algorithm>

#include "base/Text.h"
#include "fiscal/RegistryContent.h"

namespace tolvan {
namespace {

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
