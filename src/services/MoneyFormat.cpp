#include "services/MoneyFormat.h"

#include <algorithm>

namespace tolvan {
namespace {

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

/// Half away from zero to fewer decimals, as text with exactly that many.
std::string Rounded(Currency amount, std::size_t decimals) {
  std::string digits = amount.ToText();
  const bool negative = digits.front() == '-';
  if (negative) digits.erase(0, 1);
  const std::size_t cut = digits.size() - (4 - decimals);
  const bool up = cut < digits.size() && digits[cut] >= '5';
  digits.resize(cut);
  std::size_t place = up ? digits.size() : 0;
  bool carry = up;
  while (carry && place > 0) {
    char& digit = digits[--place];
    if (digit == '.') continue;
    carry = digit == '9';
    digit = carry ? '0' : static_cast<char>(digit + 1);
  }
  if (carry) digits.insert(digits.begin(), '1');
  if (digits.back() == '.') digits.pop_back();
  const bool zero = digits.find_first_not_of("0.") == std::string::npos;
  return negative && !zero ? "-" + digits : digits;
}

void Group(std::string& whole, std::string_view separator) {
  for (std::size_t place = whole.size(); place > groupSize;) {
    place -= groupSize;
    whole.insert(place, separator);
  }
}

}  // namespace

std::string FormatMoney(Currency amount, std::string_view pattern, std::string_view separator) {
  const Pattern form = ReadPattern(pattern);
  std::string text = Rounded(amount, form.mostDecimals);
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
