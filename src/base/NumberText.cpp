#include "base/NumberText.h"

#include <array>
#include <charconv>
#include <cmath>
#include <string_view>

namespace tolvan {
namespace {

constexpr int decimalsOfMantissa = 14;

/// Appends "123" with the point after `whole` digits; zeros are put where there are no digits.
void AppendWithPoint(std::string& text, std::string_view digits, int whole) {
  if (whole <= 0) {
    text.append("0.").append(static_cast<std::size_t>(-whole), '0').append(digits);
    return;
  }
  const auto count = static_cast<std::size_t>(whole);
  text.append(digits.substr(0, count));
  if (count >= digits.size()) {
    text.append(count - digits.size(), '0');
  } else {
    text.append(".").append(digits.substr(count));
  }
}

}  // namespace

std::string PlainNumberText(double value) {
  if (!std::isfinite(value)) return {};
  if (value == 0) return "0";
  std::array<char, 32> buffer{};  // d.dddddddddddddde±xxx
  const auto written = std::to_chars(buffer.data(), buffer.data() + buffer.size(), std::fabs(value),
                                     std::chars_format::scientific, decimalsOfMantissa);
  const std::string_view text(buffer.data(), static_cast<std::size_t>(written.ptr - buffer.data()));
  const std::size_t mark = text.find('e');
  std::string digits(text.substr(0, 1));
  digits.append(text.substr(2, mark - 2));
  digits.erase(digits.find_last_not_of('0') + 1);
  int exponent = 0;
  const std::size_t number = text[mark + 1] == '+' ? mark + 2 : mark + 1;
  std::from_chars(text.data() + number, text.data() + text.size(), exponent);
  std::string plain(value < 0 ? 1 : 0, '-');
  AppendWithPoint(plain, digits, exponent + 1);
  return plain;
}

}  // namespace tolvan
