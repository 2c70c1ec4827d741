#include "transport/CRC32.h"

#include <limits>
#include <optional>
#include <string>

#include "base/Text.h"
#include "transport/Crc32Digest.h"

namespace tolvan {
namespace {

std::int32_t ChecksumOf(std::span<const std::uint8_t> bytes) {
  Crc32Digest digest;
  digest.Add(bytes);
  return static_cast<std::int32_t>(digest.Value());
}

bool FitsIndex(std::int64_t bound) {
  return bound >= std::numeric_limits<std::int16_t>::min() && bound <= std::numeric_limits<std::int16_t>::max();
}

}  // namespace

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
