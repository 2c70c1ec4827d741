#include "base/NumberText.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>

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

constexpr std::string_view digitSigns = "#0,.";
constexpr std::size_t groupSize = 3;

struct Pattern {
  std::string_view before{};
  std::string_view after{};
  bool grouped = false;
  std::size_t leastDecimals = 0;
  std::size_t mostDecimals = 0;
};

Pattern ReadPattern(std::string_view text) {
  Pattern pattern;
  const std::size_t first = text.find_first_of(digitSigns);
  if (first == std::string_view::npos) return {.before = text};
  const std::size_t end = text.find_last_of(digitSigns) + 1;
  const std::string_view digits = text.substr(first, end - first);
  const std::size_t point = std::min(digits.find('.'), digits.size());
  const std::string_view decimals = digits.substr(std::min(point + 1, digits.size()));
  pattern.before = text.substr(0, first);
  pattern.after = text.substr(end);
  pattern.grouped = digits.substr(0, point).find(',') != std::string_view::npos;
  pattern.mostDecimals = std::min<std::size_t>(decimals.size(), 4);
  const std::size_t lastZero = decimals.rfind('0');
  pattern.leastDecimals = lastZero == std::string_view::npos ? 0 : std::min(lastZero + 1, pattern.mostDecimals);
  return pattern;
}

void Group(std::string& whole, std::string_view separator) {
  for (std::size_t place = whole.size(); place > groupSize;) {
    place -= groupSize;
    whole.insert(place, separator);
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

std::string PaddedNumber(int number, std::size_t width) {
  std::string text = std::to_string(number);
  if (text.size() < width) text.insert(0, width - text.size(), '0');
  return text;
}

std::string FormatMoney(Currency amount, std::string_view pattern, std::string_view separator) {
  const Pattern form = ReadPattern(pattern);
  std::string text = amount.ToRoundedText(form.mostDecimals);
  const bool negative = text.front() == '-';
  if (negative) text.erase(0, 1);
  const std::size_t point = std::min(text.find('.'), text.size());
  std::string whole = text.substr(0, point);
  std::string decimals = point < text.size() ? text.substr(point + 1) : std::string();
  while (decimals.size() > form.leastDecimals && decimals.back() == '0') decimals.pop_back();
  if (form.grouped) Group(whole, separator);
  std::string result = negative ? "-" : "";
  result.append(form.before).append(whole);
  if (!decimals.empty()) result.append(separator == "." ? "," : ".").append(decimals);
  return result.append(form.after);
}

}  // namespace tolvan
