#include "transport/CRC32.h"

#include <gtest/gtest.h>
#include <zlib.h>

#include <random>
#include <string>
#include <tuple>
#include <vector>

#include "base/Text.h"

namespace tolvan::test {
namespace {

std::uint32_t ByZlib(std::span<const std::uint8_t> bytes) {
  return static_cast<std::uint32_t>(::crc32(0, bytes.data(), static_cast<uInt>(bytes.size())));
}

TEST(CRC32Test, RefusesArraysBeyondTheirBoundsAndTextsBeyondTheCodePage) {
  const std::vector<std::uint8_t> whole(65'537, 7);
  const std::vector<std::tuple<std::size_t, std::int64_t, bool>> cases = {
      {0, 0, true},
      {0, 1, true},
      {32'768, 0, true},
      {32'769, 0, false},
      {65'536, -32'768, true},
      {65'537, -32'768, false},
      {1, 32'767, true},
      {1, 32'768, false},
      {1, -32'769, false},
  };
  for (const auto& [size, lowerBound, fits] : cases) {
    const std::span bytes(whole.data(), size);
    SCOPED_TRACE(std::to_string(size) + " from " + std::to_string(lowerBound));
    if (fits) {
      EXPECT_EQ(static_cast<std::uint32_t>(CRC32().GetByteArrayCrc32(bytes, lowerBound)), ByZlib(bytes));
    } else {
      EXPECT_THROW(CRC32().GetByteArrayCrc32(bytes, lowerBound), Crc32Overflow);
    }
  }
  EXPECT_THROW(CRC32().GetStringCrc32("a\U0001F600"), Crc32Overflow);
}

TEST(CRC32Test, AgreesWithZlibInPieces) {
  std::mt19937 random(20'261'115);
  for (int round = 0; round < 400; ++round) {
    std::vector<std::uint8_t> bytes(random() % 700);
    for (std::uint8_t& byte : bytes) byte = static_cast<std::uint8_t>(random());
    const std::string text = FromWindows1252({reinterpret_cast<const char*>(bytes.data()), bytes.size()});
    ASSERT_EQ(static_cast<std::uint32_t>(CRC32().GetStringCrc32(text)), ByZlib(bytes));
    Crc32Digest digest;
    for (std::span<const std::uint8_t> rest(bytes); !rest.empty();) {
      const std::size_t piece = std::min<std::size_t>(rest.size(), 1 + random() % 90);
      digest.Add(rest.first(piece));
      rest = rest.subspan(piece);
    }
    ASSERT_EQ(digest.Value(), ByZlib(bytes)) << bytes.size();
  }
}

}  // namespace
}  // namespace tolvan::test
