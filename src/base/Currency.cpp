// 128-bit intermediates are made of two 64-bit halves here, because 32-bit targets have no wider integer.
#include "base/Currency.h"

#include <array>
#include <charconv>
#include <cmath>
#include <limits>
#include <stdexcept>

namespace tolvan {
namespace {

/// Up to here ten thousand times a double is off by less than 0.01.
constexpr double surelyExact = 1e9;

constexpr std::uint64_t maximum = static_cast<std::uint64_t>(std::numeric_limits<std::int64_t>::max());

constexpr std::uint64_t Magnitude(std::int64_t value) {
  return value < 0 ? ~static_cast<std::uint64_t>(value) + 1 : static_cast<std::uint64_t>(value);
}

struct Wide {
  std::uint64_t high;
  std::uint64_t low;
};

Wide Multiply(std::uint64_t a, std::uint64_t b) {
  constexpr std::uint64_t mask = 0xFFFF'FFFF;
  const std::uint64_t low = (a & mask) * (b & mask);
  const std::uint64_t middle1 = (a >> 32) * (b & mask) + (low >> 32);
  const std::uint64_t middle2 = (a & mask) * (b >> 32) + (middle1 & mask);
  return {(a >> 32) * (b >> 32) + (middle1 >> 32) + (middle2 >> 32), (middle2 << 32) | (low & mask)};
}

/// value / divisor rounded half to even; throws when the quotient does not fit in 63 bits.
std::uint64_t DivideHalfEven(Wide value, std::uint64_t divisor) {
  if (value.high >= divisor) throw std::overflow_error("Currency out of range");
  std::uint64_t remainder = value.high;
  std::uint64_t quotient = 0;
  for (int bit = 63; bit >= 0; --bit) {
    const bool carry = (remainder >> 63) != 0;
    remainder = (remainder << 1) | ((value.low >> bit) & 1);
    quotient <<= 1;
    if (carry || remainder >= divisor) {
      remainder -= divisor;
      quotient |= 1;
    }
  }
  if (quotient > maximum) throw std::overflow_error("Currency out of range");
  const std::uint64_t rest = divisor - remainder;
  if (remainder > rest || (remainder == rest && (quotient & 1) != 0)) ++quotient;
  if (quotient > maximum) throw std::overflow_error("Currency out of range");
  return quotient;
}

std::int64_t WithSign(std::uint64_t magnitude, bool negative) {
  const auto value = static_cast<std::int64_t>(magnitude);
  return negative ? -value : value;
}

/// a * b / divisor, half to even.
std::int64_t Scale(std::int64_t a, std::int64_t b, std::int64_t divisor) {
  if (divisor == 0) throw std::domain_error("Currency divided by zero");
  const bool negative = ((a < 0) != (b < 0)) != (divisor < 0);
  return WithSign(DivideHalfEven(Multiply(Magnitude(a), Magnitude(b)), Magnitude(divisor)), negative);
}

/// The digits of a decimal text, its sign, and the power of ten of the digit after the last one kept.
struct Decimal {
  bool negative = false;
  std::string digits;
  std::int64_t exponent = 0;  // the value is 0.digits * 10^exponent
};

bool ReadExponent(std::string_view text, std::int64_t& exponent) {
  if (text.size() > 1 && text.front() == '+' && text[1] != '-') text.remove_prefix(1);
  int written = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), written);
  if (error != std::errc() || end != text.data() + text.size()) return false;
  exponent += written;
  return true;
}

std::optional<Decimal> ReadDecimal(std::string_view text) {
  Decimal decimal;
  if (!text.empty() && (text.front() == '-' || text.front() == '+')) {
    decimal.negative = text.front() == '-';
    text.remove_prefix(1);
  }
  bool point = false;
  bool any = false;
  std::size_t index = 0;
  for (; index < text.size(); ++index) {
    const char c = text[index];
    if (c == '.' && !point) {
      point = true;
    } else if (c >= '0' && c <= '9') {
      any = true;
      const bool leadingZero = decimal.digits.empty() && c == '0';
      if (!leadingZero) decimal.digits += c;
      if (!point && !leadingZero) ++decimal.exponent;
      if (point && leadingZero) --decimal.exponent;
    } else {
      break;
    }
  }
  if (!any) return std::nullopt;
  if (index == text.size()) return decimal;
  if (text[index] != 'e' && text[index] != 'E') return std::nullopt;
  if (!ReadExponent(text.substr(index + 1), decimal.exponent)) return std::nullopt;
  return decimal;
}

/// Whether the digits from `from` on are more than, equal to or less than one half of the digit before them.
std::strong_ordering TailAgainstHalf(const std::string& digits, std::int64_t from) {
  if (from < 0 || from >= static_cast<std::int64_t>(digits.size())) return std::strong_ordering::less;
  const auto start = static_cast<std::size_t>(from);
  if (digits[start] != '5') return digits[start] <=> '5';
  const bool more = digits.find_first_not_of('0', start + 1) != std::string::npos;
  return more ? std::strong_ordering::greater : std::strong_ordering::equal;
}

std::string WithDecimals(std::uint64_t scaled, std::size_t decimals, bool negative) {
  std::string text = std::to_string(scaled);
  if (text.size() <= decimals) text.insert(0, decimals + 1 - text.size(), '0');
  if (decimals > 0) text.insert(text.size() - decimals, 1, '.');
  if (negative && scaled != 0) text.insert(0, 1, '-');
  return text;
}

std::uint64_t DivideHalfAway(std::uint64_t value, std::uint64_t divisor) {
  return (value + divisor / 2) / divisor;
}

}  // namespace

Currency Currency::FromUnits(std::int64_t units) {
  return Currency(Scale(units, unit, 1));
}

std::optional<Currency> Currency::FromDouble(double value) {
  if (!std::isfinite(value) || std::fabs(value) > 1e15) return std::nullopt;
  if (std::fabs(value) < surelyExact) {
    // The product is off by far less than a hundredth, so away from a tie it rounds to the same count as the text.
    const double scaled = value * static_cast<double>(unit);
    const auto nearest = static_cast<std::int64_t>(scaled < 0 ? scaled - 0.5 : scaled + 0.5);
    if (std::fabs(scaled - static_cast<double>(nearest)) < 0.49) return Currency(nearest);
  }
  // The shortest text that reads back as the same double is the number a person typed; rounding that text, not its
  // binary neighbour, makes 1.00005 a true tie.
  std::array<char, 40> buffer{};
  const auto written = std::to_chars(buffer.data(), buffer.data() + buffer.size(), value);
  return Parse({buffer.data(), static_cast<std::size_t>(written.ptr - buffer.data())});
}

std::optional<Currency> Currency::Parse(std::string_view text) {
  const std::optional<Decimal> decimal = ReadDecimal(text);
  if (!decimal) return std::nullopt;
  if (decimal->digits.empty()) return Currency();
  const std::int64_t kept = decimal->exponent + 4;  // digits that make the count of ten-thousandths
  if (kept > 19) return std::nullopt;
  std::uint64_t count = 0;
  for (std::int64_t index = 0; index < kept; ++index) {
    const auto place = static_cast<std::size_t>(index);
    const int digit = place < decimal->digits.size() ? decimal->digits[place] - '0' : 0;
    count = count * 10 + static_cast<std::uint64_t>(digit);
  }
  const auto tail = kept < 0 ? std::strong_ordering::less : TailAgainstHalf(decimal->digits, kept);
  if (std::is_gt(tail) || (std::is_eq(tail) && (count & 1) != 0)) ++count;
  if (count > maximum) return std::nullopt;
  return Currency(WithSign(count, decimal->negative));
}

double Currency::ToDouble() const {
  return static_cast<double>(count_) / static_cast<double>(unit);
}

std::string Currency::ToText() const {
  return WithDecimals(Magnitude(count_), 4, count_ < 0);
}

std::string Currency::ToShortestText() const {
  std::string text = ToText();
  text.erase(text.find_last_not_of('0') + 1);
  if (text.back() == '.') text.pop_back();
  return text;
}

std::string Currency::ToRoundedText(std::size_t decimals) const {
  std::uint64_t divisor = 1;
  for (std::size_t dropped = decimals; dropped < 4; ++dropped) divisor *= 10;
  return WithDecimals(DivideHalfAway(Magnitude(count_), divisor), decimals, count_ < 0);
}

Currency Currency::operator+(Currency other) const {
  std::int64_t sum = 0;
  if (__builtin_add_overflow(count_, other.count_, &sum)) throw std::overflow_error("Currency out of range");
  return Currency(sum);
}

Currency Currency::operator-(Currency other) const {
  std::int64_t difference = 0;
  if (__builtin_sub_overflow(count_, other.count_, &difference)) throw std::overflow_error("Currency out of range");
  return Currency(difference);
}

Currency Currency::operator-() const {
  return Currency() - *this;
}

Currency Currency::MultipliedBy(Currency factor) const {
  return Currency(Scale(count_, factor.count_, unit));
}

Currency Currency::DividedBy(Currency divisor) const {
  return Currency(Scale(count_, unit, divisor.count_));
}

Currency Currency::ScaledBy(std::int64_t numerator, std::int64_t denominator) const {
  return Currency(Scale(count_, numerator, denominator));
}

}  // namespace tolvan
