// Numbers as the workbook formats store them, read from any address.
#pragma once

#include <bit>
#include <cstdint>

namespace tolvan {

inline std::uint16_t ReadU16(const unsigned char* bytes) {
  return static_cast<std::uint16_t>(bytes[0] | bytes[1] << 8);
}

inline std::uint32_t ReadU32(const unsigned char* bytes) {
  return static_cast<std::uint32_t>(ReadU16(bytes)) | static_cast<std::uint32_t>(ReadU16(bytes + 2)) << 16;
}

inline std::uint64_t ReadU64(const unsigned char* bytes) {
  return static_cast<std::uint64_t>(ReadU32(bytes)) | static_cast<std::uint64_t>(ReadU32(bytes + 4)) << 32;
}

inline double ReadDouble(const unsigned char* bytes) {
  return std::bit_cast<double>(ReadU64(bytes));
}

}  // namespace tolvan
