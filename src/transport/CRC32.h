// CRC-32 as zip and PNG use it (ISO-HDLC, reflected polynomial EDB88320): over data of any length that comes in pieces,
// and as the checksum class that other programs create, with the limits they know it by.
#pragma once

#include <cstdint>
#include <span>
#include <stdexcept>
#include <string_view>

namespace tolvan {

/// The checksum of data that comes in pieces.
class Crc32Digest {
 public:
  void Add(std::span<const std::uint8_t> bytes);

  /// The checksum of everything added so far; 0 when nothing was.
  std::uint32_t Value() const { return ~state_; }

 private:
  std::uint32_t state_ = 0xFFFFFFFFU;
};

/// A character that has no single byte, or an array whose bounds do not fit 16 bits.
class Crc32Overflow : public std::overflow_error {
 public:
  using std::overflow_error::overflow_error;
};

/// Created by the host through the COM library; the command uses it for texts.
class CRC32 {
 public:
  /// Over the text's characters, each as its byte in Windows-1252; `text` is UTF-8. The result holds the checksum's bit
  /// pattern. Throws Crc32Overflow for a character that the code page does not hold, and for a byte that is not UTF-8.
  std::int32_t GetStringCrc32(std::string_view text) const;

  /// Over an array whose first element has the index `lowerBound`. Throws Crc32Overflow when the index of its first or
  /// last element lies outside -32768 to 32767; an empty array's last index is the one before its first.
  std::int32_t GetByteArrayCrc32(std::span<const std::uint8_t> bytes, std::int64_t lowerBound = 0) const;
};

}  // namespace tolvan
