#include "spreadsheet/CompoundFile.h"

#include <algorithm>

#include "spreadsheet/WorkbookLimits.h"

namespace tolvan {
namespace {

constexpr std::size_t headerBytes = 512;
constexpr std::size_t entryBytes = 128;
constexpr std::uint32_t noEntry = 0xFFFFFFFF;
constexpr std::uint32_t lastRegularSector = 0xFFFFFFFA;  // above: free, end of chain, the tables themselves
constexpr std::uint64_t miniSectorBytes = 64;
constexpr std::uint64_t miniStreamBelow = 4096;
constexpr std::size_t tableSectorsInHeader = 109;
constexpr std::uint64_t wholeChain = ~std::uint64_t{0};
constexpr unsigned typeStorage = 1;
constexpr unsigned typeStream = 2;
constexpr unsigned typeRoot = 5;

[[noreturn]] void FailChain() {
  FailDamaged("el libro está truncado o sus sectores están mal enlazados");
}

const unsigned char* Bytes(std::span<const char> text) {
  return reinterpret_cast<const unsigned char*>(text.data());
}

std::string AsciiLower(std::string_view text) {
  std::string lower(text);
  for (char& c : lower)
    if (c >= 'A' && c <= 'Z') c = static_cast<char>(c | 0x20);
  return lower;
}

std::string NameOf(const unsigned char* entry) {
  std::string name;
  const std::size_t bytes = std::min<std::size_t>(ReadU16(entry + 64), 64);
  for (std::size_t i = 0; i + 3 < bytes; i += 2) {
    const std::uint16_t unit = ReadU16(entry + i);
    name.push_back(unit < 0x80 ? static_cast<char>(unit) : '?');
  }
  return AsciiLower(name);
}

}  // namespace

void CompoundStream::Append(std::uint64_t fileOffset, std::uint64_t length) {
  if (!extents_.empty() && extents_.back().fileOffset + extents_.back().length == fileOffset) {
    extents_.back().length += length;
  } else {
    extents_.push_back({size_, fileOffset, length});
  }
  size_ += length;
}

std::vector<CompoundStream::Extent>::const_iterator CompoundStream::Find(std::uint64_t offset) const {
  const auto after =
      std::upper_bound(extents_.begin(), extents_.end(), offset,
                       [](std::uint64_t wanted, const Extent& extent) { return wanted < extent.streamOffset; });
  return after - 1;
}

std::uint64_t CompoundStream::FileOffsetOf(std::uint64_t offset) const {
  const auto extent = Find(offset);
  return extent->fileOffset + (offset - extent->streamOffset);
}

std::size_t CompoundStream::ReadAt(std::uint64_t offset, std::span<char> buffer) const {
  std::size_t done = 0;
  if (offset >= size_) return 0;
  for (auto extent = Find(offset); extent != extents_.end() && done < buffer.size(); ++extent) {
    const std::uint64_t inside = offset + done - extent->streamOffset;
    const std::uint64_t wanted = std::min<std::uint64_t>(extent->length - inside, buffer.size() - done);
    const std::size_t got = file_->ReadAt(extent->fileOffset + inside, buffer.subspan(done, wanted));
    done += got;
    if (got < wanted) break;
  }
  return done;
}

CompoundFile::CompoundFile(const WorkbookFile& file) : file_(file), header_(headerBytes) {
  ReadHeader();
  ReadSectorTable();
  ReadDirectory();
}

void CompoundFile::ReadHeader() {
  std::vector<char> bytes(headerBytes);
  if (file_.ReadAt(0, bytes) < headerBytes) FailDamaged("el libro está truncado");
  header_.assign(bytes.begin(), bytes.end());
  sectorShift_ = ReadU16(&header_[30]);
  const bool valid =
      ReadU16(&header_[28]) == 0xFFFE && (sectorShift_ == 9 || sectorShift_ == 12) && ReadU16(&header_[32]) == 6;
  if (!valid) FailDamaged("el encabezado del libro está dañado");
  // The last sector may lack its padding.
  const std::uint64_t sectorBytes = std::uint64_t{1} << sectorShift_;
  sectorCount_ = (file_.Size() + sectorBytes - 1) / sectorBytes - 1;
}

std::vector<std::uint32_t> CompoundFile::ReadNumbers(std::uint32_t sector) const {
  std::vector<char> bytes(std::size_t{1} << sectorShift_);
  if (sector >= sectorCount_ || file_.ReadAt(OffsetOf(sector), bytes) < bytes.size()) FailChain();
  std::vector<std::uint32_t> numbers;
  for (std::size_t i = 0; i < bytes.size(); i += 4) numbers.push_back(ReadU32(Bytes(bytes) + i));
  return numbers;
}

// The table of sector chains lies in sectors itself: the first 109 are named in the header, the others in a chain of
// lists.
void CompoundFile::ReadSectorTable() {
  std::vector<std::uint32_t> tableSectors;
  for (std::size_t i = 0; i < tableSectorsInHeader; ++i) tableSectors.push_back(ReadU32(&header_[76 + 4 * i]));
  // No more lists than the file's sectors can need, so that a chain that runs in a circle ends.
  const std::uint64_t numbersPerSector = (std::uint64_t{1} << sectorShift_) / 4;
  const std::uint64_t listsNeeded = sectorCount_ / (numbersPerSector * (numbersPerSector - 1)) + 2;
  std::uint64_t lists = 0;
  for (std::uint32_t list = ReadU32(&header_[68]); list < lastRegularSector;) {
    if (++lists > listsNeeded) FailChain();
    const std::vector<std::uint32_t> numbers = ReadNumbers(list);
    tableSectors.insert(tableSectors.end(), numbers.begin(), numbers.end() - 1);
    list = numbers.back();
  }
  const std::uint32_t count = ReadU32(&header_[44]);
  std::uint32_t used = 0;
  for (const std::uint32_t sector : tableSectors) {
    if (used == count || nextSector_.size() >= sectorCount_) break;
    if (sector >= lastRegularSector) continue;
    const std::vector<std::uint32_t> numbers = ReadNumbers(sector);
    nextSector_.insert(nextSector_.end(), numbers.begin(), numbers.end());
    ++used;
  }
}

CompoundStream CompoundFile::Chain(std::uint32_t first, std::uint64_t size) const {
  CompoundStream stream(file_);
  const std::uint64_t sectorBytes = std::uint64_t{1} << sectorShift_;
  std::uint64_t steps = 0;
  for (std::uint32_t sector = first; stream.Size() < size && sector < lastRegularSector;) {
    if (++steps > sectorCount_ || sector >= sectorCount_ || sector >= nextSector_.size()) FailChain();
    stream.Append(OffsetOf(sector), std::min(sectorBytes, size - stream.Size()));
    sector = nextSector_[sector];
  }
  if (size != wholeChain && stream.Size() < size) FailChain();
  return stream;
}

std::vector<std::uint32_t> CompoundFile::MiniTable() const {
  const CompoundStream stream = Chain(ReadU32(&header_[60]), wholeChain);
  if (stream.Size() > limits::maximumCompoundDirectoryBytes) FailTooBig("la tabla de sectores pequeños");
  std::vector<char> bytes(stream.Size());
  bytes.resize(stream.ReadAt(0, bytes));
  std::vector<std::uint32_t> table;
  for (std::size_t i = 0; i + 4 <= bytes.size(); i += 4) table.push_back(ReadU32(Bytes(bytes) + i));
  return table;
}

CompoundStream CompoundFile::MiniChain(std::uint32_t first, std::uint64_t size) const {
  const CompoundStream container = Chain(root_.firstSector, root_.size);
  const std::vector<std::uint32_t> table = MiniTable();
  CompoundStream stream(file_);
  for (std::uint32_t sector = first; stream.Size() < size;) {
    const std::uint64_t start = std::uint64_t{sector} * miniSectorBytes;
    const std::uint64_t length = std::min(miniSectorBytes, size - stream.Size());
    if (sector >= table.size() || start + length > container.Size()) FailChain();
    stream.Append(container.FileOffsetOf(start), length);
    sector = table[sector];
  }
  return stream;
}

void CompoundFile::ReadDirectory() {
  const CompoundStream stream = Chain(ReadU32(&header_[48]), wholeChain);
  if (stream.Size() > limits::maximumCompoundDirectoryBytes) FailTooBig("el directorio del libro");
  std::vector<char> directory(stream.Size());
  directory.resize(stream.ReadAt(0, directory));
  if (directory.size() < entryBytes) FailChain();
  const unsigned char* root = Bytes(directory);
  if (root[66] != typeRoot) FailDamaged("el directorio del libro está dañado");
  root_.firstSector = ReadU32(root + 116);
  root_.size = ReadU32(root + 120);
  AddRootChildren(directory, ReadU32(root + 76));
}

// The entries of a storage form a tree by their left and right siblings. A storage inside (an embedded workbook, for
// one) is not entered.
void CompoundFile::AddRootChildren(std::span<const char> directory, std::uint32_t first) {
  std::vector<bool> seen(directory.size() / entryBytes);
  std::vector<std::uint32_t> pending{first};
  while (!pending.empty()) {
    const std::uint32_t id = pending.back();
    pending.pop_back();
    if (id == noEntry || id >= seen.size() || seen[id]) continue;
    seen[id] = true;
    const unsigned char* bytes = Bytes(directory) + id * entryBytes;
    pending.push_back(ReadU32(bytes + 68));
    pending.push_back(ReadU32(bytes + 72));
    if (bytes[66] != typeStream && bytes[66] != typeStorage) continue;
    // The upper half of the size is noise in files with sectors of 512 bytes.
    streams_.push_back({NameOf(bytes), bytes[66], ReadU32(bytes + 116), ReadU32(bytes + 120)});
  }
}

const CompoundFile::Entry* CompoundFile::FindEntry(std::string_view name) const {
  const std::string wanted = AsciiLower(name);
  for (const Entry& entry : streams_)
    if (entry.type == typeStream && entry.name == wanted) return &entry;
  return nullptr;
}

std::optional<CompoundStream> CompoundFile::Open(std::string_view name) const {
  const Entry* entry = FindEntry(name);
  if (entry == nullptr) return std::nullopt;
  return entry->size < miniStreamBelow ? MiniChain(entry->firstSector, entry->size)
                                       : Chain(entry->firstSector, entry->size);
}

}  // namespace tolvan
