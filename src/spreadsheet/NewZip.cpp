#include "spreadsheet/NewZip.h"

#include <zip.h>

#include <array>
#include <memory>

namespace tolvan {
namespace {

using ZipHandle = std::unique_ptr<zip_t, decltype(&zip_discard)>;
using Source = std::unique_ptr<zip_source_t, decltype(&zip_source_free)>;

/// Everything happens in memory, so there is hardly another cause than that it ran out.
[[noreturn]] void Fail(int code) {
  throw HostError(HostErrorKind::Failed, "no se pudo empaquetar el libro; es posible que falte memoria", {}, code);
}

zip_uint16_t DosDate(Date day) {
  return static_cast<zip_uint16_t>(((day.Year() - 1980) << 9) | (day.Month() << 5) | day.Day());
}

Source SourceOf(const NewZipEntry& entry, zip_error_t& error) {
  std::vector<zip_buffer_fragment_t> fragments;
  fragments.reserve(entry.pieces.size());
  for (const std::string_view piece : entry.pieces) {
    // The library only reads from it. NOLINTNEXTLINE(cppcoreguidelines-pro-type-const-cast)
    auto* const bytes = reinterpret_cast<zip_uint8_t*>(const_cast<char*>(piece.data()));
    fragments.push_back({bytes, piece.size()});
  }
  return {zip_source_buffer_fragment_create(fragments.data(), fragments.size(), 0, &error), &zip_source_free};
}

void Add(zip_t* archive, const NewZipEntry& entry, Date day) {
  zip_error_t error{};
  Source source = SourceOf(entry, error);
  if (!source) Fail(zip_error_code_zip(&error));
  const zip_int64_t index = zip_file_add(archive, entry.name.c_str(), source.get(), ZIP_FL_ENC_UTF_8);
  if (index < 0) Fail(zip_error_code_zip(zip_get_error(archive)));
  static_cast<void>(source.release());  // the archive's own from here on
  if (zip_file_set_dostime(archive, static_cast<zip_uint64_t>(index), 0, DosDate(day), 0) != 0)
    Fail(zip_error_code_zip(zip_get_error(archive)));
}

void Pack(const std::vector<NewZipEntry>& entries, Date day, zip_source_t* packed) {
  zip_error_t error{};
  ZipHandle archive(zip_open_from_source(packed, ZIP_TRUNCATE, &error), &zip_discard);
  if (!archive) Fail(zip_error_code_zip(&error));
  zip_source_keep(packed);  // closing the archive gives up one hold on it
  for (const NewZipEntry& entry : entries) Add(archive.get(), entry, day);
  if (zip_close(archive.get()) != 0) Fail(zip_error_code_zip(zip_get_error(archive.get())));
  static_cast<void>(archive.release());
}

void Copy(zip_source_t* packed, WholeFile& target) {
  if (zip_source_open(packed) != 0) Fail(zip_error_code_zip(zip_source_error(packed)));
  std::array<char, std::size_t{64} << 10> buffer{};
  for (;;) {
    const zip_int64_t count = zip_source_read(packed, buffer.data(), buffer.size());
    if (count < 0) Fail(zip_error_code_zip(zip_source_error(packed)));
    if (count == 0) break;
    target.Write({buffer.data(), static_cast<std::size_t>(count)});
  }
  zip_source_close(packed);
}

}  // namespace

void WriteZip(const std::vector<NewZipEntry>& entries, Date day, WholeFile& target) {
  zip_error_t error{};
  const Source packed(zip_source_buffer_create(nullptr, 0, 0, &error), &zip_source_free);
  if (!packed) Fail(zip_error_code_zip(&error));
  Pack(entries, day, packed.get());
  Copy(packed.get(), target);
}

}  // namespace tolvan
