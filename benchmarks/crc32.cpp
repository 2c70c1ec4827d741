// The checksum of 64 MB in memory, against zlib's.
#include <zlib.h>

#include <cstdio>
#include <random>
#include <vector>

#include "Bench.h"
#include "transport/CRC32.h"

namespace tolvan::bench {
namespace {

int Main() {
  constexpr std::size_t size = std::size_t{64} << 20;
  std::mt19937 random(64);
  std::vector<std::uint8_t> bytes(size);
  for (std::uint8_t& byte : bytes) byte = static_cast<std::uint8_t>(random());
  std::uint32_t found = 0;
  std::uint32_t expected = 1;
  const Work job{[&] {
    Crc32Digest digest;
    digest.Add(bytes);
    found = digest.Value();
  }};
  const Work reference{
      [&] { expected = static_cast<std::uint32_t>(::crc32(0, bytes.data(), static_cast<uInt>(size))); }};
  const bool reached = Compare("CRC-32 of 64 MB", job, reference, 2.5, 9);
  if (found != expected) {
    std::fprintf(stderr, "the checksums differ: %08X and %08X\n", found, expected);
    return 2;
  }
  return reached ? 0 : 1;
}

}  // namespace
}  // namespace tolvan::bench

int main() {
  return tolvan::bench::Main();
}
