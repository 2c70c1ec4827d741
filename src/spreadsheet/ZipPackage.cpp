#include "spreadsheet/ZipPackage.h"

#include <unistd.h>
#include <zip.h>

#include <algorithm>
#include <optional>
#include <vector>

#include "base/Text.h"
#include "spreadsheet/WorkbookLimits.h"

namespace tolvan {
namespace {

constexpr std::size_t endRecordBytes = 22;
constexpr std::size_t locatorBytes = 20;
constexpr std::size_t end64RecordBytes = 56;

void CheckDirectorySize(std::uint64_t entries, std::uint64_t bytes) {
  if (entries > limits::maximumZipEntries || bytes > limits::maximumZipDirectoryBytes)
    FailTooBig("el índice del archivo comprimido");
}

// The 64-bit end record that the locator before an end record points to.
void CheckEnd64(const WorkbookFile& file, const unsigned char* locator) {
  std::vector<char> record(end64RecordBytes);
  if (file.ReadAt(ReadU64(locator + 8), record) != record.size()) return;  // the library refuses it
  const auto* bytes = reinterpret_cast<const unsigned char*>(record.data());
  CheckDirectorySize(ReadU64(bytes + 32), ReadU64(bytes + 40));
}

// The library reads the whole table of contents into memory. It takes one of the end records in the last 64 KB; all of
// them must be modest.
void CheckEndRecords(const WorkbookFile& file) {
  const std::uint64_t tail = std::min<std::uint64_t>(file.Size(), 0xFFFF + endRecordBytes + locatorBytes);
  std::vector<char> buffer(tail);
  buffer.resize(file.ReadAt(file.Size() - tail, buffer));
  const std::string_view text(buffer.data(), buffer.size());
  using namespace std::string_view_literals;
  for (std::size_t at = text.find("PK\5\6"sv); at != std::string_view::npos; at = text.find("PK\5\6"sv, at + 1)) {
    const auto* record = reinterpret_cast<const unsigned char*>(text.data()) + at;
    if (text.size() - at < endRecordBytes) break;
    const bool has64 = at >= locatorBytes && text.substr(at - locatorBytes, 4) == "PK\6\7"sv;
    if (has64) {
      CheckEnd64(file, record - locatorBytes);
    } else {
      CheckDirectorySize(ReadU16(record + 10), ReadU32(record + 12));
    }
  }
}

class ZipMember final : public InputFile {
 public:
  ZipMember(std::string path, std::unique_ptr<ZipPart> part, std::uint64_t size)
      : path_(std::move(path)), part_(std::move(part)), size_(size) {}

  std::uint64_t Size() const override { return size_; }

  std::size_t Read(std::span<char> buffer) override {
    return WithPath(path_, [&] {
      std::size_t total = 0;
      while (total < buffer.size()) {
        const std::size_t count = part_->Read(buffer.subspan(total));
        if (count == 0) break;
        total += count;
      }
      return total;
    });
  }

 private:
  std::string path_;
  std::unique_ptr<ZipPart> part_;
  std::uint64_t size_;
};

class ZipArchive final : public Archive {
 public:
  explicit ZipArchive(std::string path) : path_(std::move(path)), file_(path_), package_(file_) {
    for (ZipEntry& entry : package_.Entries()) {
      if (entry.name.ends_with('/')) continue;
      names_.push_back(entry.name);
      files_.push_back(std::move(entry));
    }
  }

  const std::vector<std::string>& Names() const override { return names_; }

  std::unique_ptr<InputFile> Open(std::size_t place) override {
    const ZipEntry& entry = files_.at(place);
    return WithPath(path_, [&] {
      return std::make_unique<ZipMember>(path_, package_.Open(entry, limits::maximumPartBytes), entry.bytes);
    });
  }

 private:
  std::string path_;
  WorkbookFile file_;
  ZipPackage package_;
  std::vector<std::string> names_;
  std::vector<ZipEntry> files_;
};

}  // namespace

struct ZipPart::Handle {
  zip_file_t* file;
  explicit Handle(zip_file_t* opened) : file(opened) {}
  ~Handle() { zip_fclose(file); }
  Handle(const Handle&) = delete;
  Handle& operator=(const Handle&) = delete;
};

ZipPart::ZipPart(const WorkbookFile& file, std::unique_ptr<Handle> handle, std::string name, std::uint64_t packedBytes,
                 std::uint64_t limit)
    : file_(file), handle_(std::move(handle)), name_(std::move(name)), packedBytes_(packedBytes), limit_(limit) {}

ZipPart::~ZipPart() = default;

std::size_t ZipPart::Read(std::span<char> buffer) {
  const zip_int64_t count = zip_fread(handle_->file, buffer.data(), buffer.size());
  file_.CheckUnchanged();
  if (count < 0) FailDamaged("la parte «" + name_ + "» está truncada o dañada");
  inflatedBytes_ += static_cast<std::uint64_t>(count);
  if (inflatedBytes_ > limit_) FailTooBig("el tamaño de la parte «" + name_ + "»");
  if (inflatedBytes_ > limits::inflationFloorBytes && inflatedBytes_ / limits::maximumInflationRatio > packedBytes_)
    FailTooBig("la compresión de la parte «" + name_ + "»");
  return static_cast<std::size_t>(count);
}

struct ZipPackage::Archive {
  zip_t* zip;
  explicit Archive(zip_t* opened) : zip(opened) {}
  ~Archive() { zip_discard(zip); }
  Archive(const Archive&) = delete;
  Archive& operator=(const Archive&) = delete;

  std::optional<zip_uint64_t> Find(const std::string& name) const {
    // Some writers separate folders by a backslash.
    for (const std::string& candidate : {name, ReplaceAll(name, "/", "\\")})
      for (const zip_flags_t flags : {zip_flags_t{0}, zip_flags_t{ZIP_FL_NOCASE}})
        if (const zip_int64_t index = zip_name_locate(zip, candidate.c_str(), flags); index >= 0)
          return static_cast<zip_uint64_t>(index);
    return std::nullopt;
  }
};

ZipPackage::ZipPackage(const WorkbookFile& file) : file_(file) {
  CheckEndRecords(file);
  const int descriptor = file.Duplicate();
  int code = 0;
  zip_t* zip = zip_fdopen(descriptor, 0, &code);
  if (zip == nullptr) {
    close(descriptor);
    FailDamaged("el archivo comprimido está truncado o dañado");
  }
  archive_ = std::make_unique<Archive>(zip);
}

ZipPackage::~ZipPackage() = default;

bool ZipPackage::Has(const std::string& name) const {
  return archive_->Find(name).has_value();
}

std::unique_ptr<ZipPart> ZipPackage::Open(const std::string& name, std::uint64_t limit) const {
  const auto index = archive_->Find(name);
  if (!index) FailDamaged("falta la parte «" + name + "»");
  return Open(ZipEntry{.index = *index, .name = name}, limit);
}

std::unique_ptr<ZipPart> ZipPackage::Open(const ZipEntry& entry, std::uint64_t limit) const {
  const std::string& name = entry.name;
  zip_stat_t status;
  if (zip_stat_index(archive_->zip, entry.index, 0, &status) != 0) FailDamaged("la parte «" + name + "» está dañada");
  if (status.encryption_method != ZIP_EM_NONE) FailDamaged("el archivo está protegido con contraseña");
  if (status.comp_method != ZIP_CM_STORE && status.comp_method != ZIP_CM_DEFLATE)
    FailDamaged("la parte «" + name + "» tiene una compresión desconocida");
  zip_file_t* opened = zip_fopen_index(archive_->zip, entry.index, 0);
  if (opened == nullptr) FailDamaged("la parte «" + name + "» está truncada o dañada");
  return std::make_unique<ZipPart>(file_, std::make_unique<ZipPart::Handle>(opened), name, status.comp_size, limit);
}

std::vector<ZipEntry> ZipPackage::Entries() const {
  std::vector<ZipEntry> entries;
  const zip_int64_t count = zip_get_num_entries(archive_->zip, 0);
  for (zip_int64_t at = 0; at < count; ++at) {
    const auto index = static_cast<zip_uint64_t>(at);
    zip_stat_t status;
    if (zip_stat_index(archive_->zip, index, 0, &status) != 0 || (status.valid & ZIP_STAT_NAME) == 0)
      FailDamaged("el índice del archivo comprimido está dañado");
    entries.push_back({.index = index, .name = status.name, .bytes = status.size});
  }
  return entries;
}

std::unique_ptr<Archive> ZipArchiveReader::OpenArchive(std::string_view path) {
  const std::string name(path);
  return WithPath(name, [&] { return std::make_unique<ZipArchive>(name); });
}

}  // namespace tolvan
