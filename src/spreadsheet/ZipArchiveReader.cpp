#include "spreadsheet/ZipArchiveReader.h"

#include "spreadsheet/WorkbookFailure.h"
#include "spreadsheet/WorkbookLimits.h"
#include "spreadsheet/ZipPackage.h"

namespace tolvan {
namespace {

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

std::unique_ptr<Archive> ZipArchiveReader::OpenArchive(std::string_view path) {
  const std::string name(path);
  return WithPath(name, [&] { return std::make_unique<ZipArchive>(name); });
}

}  // namespace tolvan
