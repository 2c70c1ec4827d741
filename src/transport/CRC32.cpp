#include "transport/CRC32.h"

#include <array>
#include <cstddef>
#include <limits>
#include <optional>
#include <string>

#include "base/Text.h"

namespace tolvan {
namespace {

// Sixteen bytes at a time: table k holds what a byte becomes when k zero bytes follow it, so that the look-ups of
// sixteen bytes do not wait for one another.
constexpr std::size_t slices = 16;
using Table = std::array<std::uint32_t, 256>;

constexpr std::array<Table, slices> MakeTables() {
  std::array<Table, slices> tables{};
  for (std::uint32_t index = 0; index < 256; ++index) {
    std::uint32_t value = index;
    for (int bit = 0; bit < 8; ++bit) value = (value & 1U) != 0 ? (value >> 1U) ^ 0xEDB88320U : value >> 1U;
    tables[0][index] = value;
  }
  for (std::size_t slice = 1; slice < slices; ++slice) {
    for (std::size_t index = 0; index < 256; ++index) {
      const std::uint32_t before = tables[slice - 1][index];
      tables[slice][index] = (before >> 8U) ^ tables[0][before & 0xFFU];
    }
  }
  return tables;
}

constexpr std::array<Table, slices> tables = MakeTables();

// Little-endian whatever the machine is; compilers make one load of it.
std::uint32_t WordAt(const std::uint8_t* bytes) {
  return std::uint32_t{bytes[0]} | std::uint32_t{bytes[1]} << 8U | std::uint32_t{bytes[2]} << 16U |
         std::uint32_t{bytes[3]} << 24U;
}

/// What four bytes become when `following` of the sixteen come after them.
std::uint32_t Fold(std::uint32_t word, std::size_t following) {
  return tables[following + 3][word & 0xFFU] ^ tables[following + 2][word >> 8U & 0xFFU] ^
         tables[following + 1][word >> 16U & 0xFFU] ^ tables[following][word >> 24U];
}

std::int32_t ChecksumOf(std::span<const std::uint8_t> bytes) {
  Crc32Digest digest;
  digest.Add(bytes);
  return static_cast<std::int32_t>(digest.Value());
}

bool FitsIndex(std::int64_t bound) {
  return bound >= std::numeric_limits<std::int16_t>::min() && bound <= std::numeric_limits<std::int16_t>::max();
}

}  // namespace

void Crc32Digest::Add(std::span<const std::uint8_t> bytes) {
  std::uint32_t state = state_;
  const std::uint8_t* next = bytes.data();
  std::size_t left = bytes.size();
  for (; left >= slices; left -= slices, next += slices) {
    state = Fold(state ^ WordAt(next), 12) ^ Fold(WordAt(next + 4), 8) ^ Fold(WordAt(next + 8), 4) ^
            Fold(WordAt(next + 12), 0);
  }
  for (; left > 0; --left, ++next) state = (state >> 8U) ^ tables[0][(state ^ *next) & 0xFFU];
  state_ = state;
}

std::int32_t CRC32::GetStringCrc32(std::string_view text) const {
  const std::optional<std::string> bytes = ToWindows1252(text);
  if (!bytes) throw Crc32Overflow("El texto tiene caracteres que no caben en un byte (Windows-1252)");
  return ChecksumOf({reinterpret_cast<const std::uint8_t*>(bytes->data()), bytes->size()});
}

std::int32_t CRC32::GetByteArrayCrc32(std::span<const std::uint8_t> bytes, std::int64_t lowerBound) const {
  const auto size = static_cast<std::int64_t>(bytes.size());
  if (!FitsIndex(lowerBound) || !FitsIndex(lowerBound + size - 1)) {
    throw Crc32Overflow("Los límites del arreglo están fuera de -32768 a 32767");
  }
  return ChecksumOf(bytes);
}

}  // namespace tolvan
