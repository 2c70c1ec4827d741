#include "import/OriginFingerprint.h"

#include <array>
#include <charconv>
#include <optional>

#include "base/Text.h"

namespace tolvan {
namespace {

/// Each character beyond the code page as "u", its code point in hexadecimal and ";". An upper-cased text holds no
/// small "u" of its own, so that no two texts give the same bytes.
std::string EscapedBytes(std::string_view upper) {
  std::string bytes;
  for (std::size_t position = 0; position < upper.size();) {
    const std::size_t begin = position;
    const auto codePoint = static_cast<std::uint32_t>(NextCodePoint(upper, position));
    if (const std::optional<std::string> byte = ToWindows1252(upper.substr(begin, position - begin))) {
      bytes += *byte;
      continue;
    }
    std::array<char, 8> digits{};
    const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), codePoint, 16).ptr;
    bytes.append("u").append(digits.data(), end).append(";");
  }
  return bytes;
}

}  // namespace

std::string OriginFingerprint(const HashService& hashes, std::string_view brand, std::string_view description) {
  const std::string joined = std::string(brand) + std::string(description);
  const std::string upper = ToUpper(joined);
  if (const std::optional<std::string> bytes = ToWindows1252(upper)) return hashes.Md5(*bytes);
  // "ƒ" and "µ" lie in the code page, but not their capitals: stores hold the fingerprints of such lines with "?".
  if (ToWindows1252(joined)) return hashes.Md5(ToWindows1252(upper, '?'));
  return hashes.Md5(EscapedBytes(upper));
}

}  // namespace tolvan
