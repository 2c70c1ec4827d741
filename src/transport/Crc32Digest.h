// CRC-32 as zip and PNG use it (ISO-HDLC, reflected polynomial EDB88320), over data of any length that comes in pieces.
#pragma once

#include <cstdint>
#include <span>

namespace tolvan {

class Crc32Digest {
 public:
  void Add(std::span<const std::uint8_t> bytes);

  /// The checksum of everything added so far; 0 when nothing was.
  std::uint32_t Value() const { return ~state_; }

 private:
  std::uint32_t state_ = 0xFFFFFFFFU;
};

}  // namespace tolvan
