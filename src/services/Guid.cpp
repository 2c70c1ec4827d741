#include "services/Guid.h"

#include <cstdint>
#include <random>
#include <string_view>

namespace tolvan {

std::string NewGuidText() {
  constexpr std::string_view pattern = "{xxxxxxxx-xxxx-xxxx-xxxx-xxxxxxxxxxxx}";
  constexpr std::string_view digits = "0123456789ABCDEF";
  constexpr std::size_t versionPlace = 15;  // the digit that tells the version
  constexpr std::size_t variantPlace = 20;  // the digit whose two high bits tell the variant

  std::random_device source;
  std::string text(pattern);
  std::uint32_t bits = 0;
  unsigned left = 0;
  for (std::size_t place = 0; place < text.size(); ++place) {
    if (text[place] != 'x') continue;
    if (left == 0) {
      bits = source();
      left = 8;
    }
    std::size_t digit = bits & 0xFU;
    bits >>= 4U;
    --left;
    if (place == versionPlace) digit = 4;
    if (place == variantPlace) digit = 8U | (digit & 3U);
    text[place] = digits[digit];
  }
  return text;
}

}  // namespace tolvan
