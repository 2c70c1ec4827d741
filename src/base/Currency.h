// Money as a signed 64-bit count of ten-thousandths, the automation type of the same name. All arithmetic is exact on
// integers; the only places where a value is rounded are named for it, and all of them round half to even except
// ToWholeUnits, which follows the display pattern "0" (half away from zero).
#pragma once

#include <compare>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace tolvan {

class Currency {
 public:
  static constexpr std::int64_t unit = 10'000;

  constexpr Currency() = default;

  /// `count` ten-thousandths: FromTenThousandths(12'345) is 1.2345.
  static constexpr Currency FromTenThousandths(std::int64_t count) { return Currency(count); }

  /// Whole units. Throws std::overflow_error beyond ±922'337'203'685'477.
  static Currency FromUnits(std::int64_t units);

  /// The nearest count, a tie going to the even one. Nothing when `value` is not finite or out of range.
  static std::optional<Currency> FromDouble(double value);

  /// A plain or scientific decimal ("-12.5", ".5", "1e3"), a point as separator, no grouping, no blanks. Decimals past
  /// the fourth are rounded half to even over the exact text. Nothing when the text is not such a number or out of
  /// range.
  static std::optional<Currency> Parse(std::string_view text);

  constexpr std::int64_t TenThousandths() const { return count_; }
  double ToDouble() const;

  /// Always four decimals: "-0.0500".
  std::string ToText() const;

  /// As few decimals as the value needs, at most four: "10.5", "3". The form of a number in SQL text.
  std::string ToShortestText() const;

  /// Exactly so many decimals (0 to 4), rounded half away from zero, no grouping: as the display patterns "0" and
  /// "0.00" show an amount. A value that rounds to nothing has no sign.
  std::string ToRoundedText(std::size_t decimals) const;

  /// Exact sums; throw std::overflow_error when the result does not fit.
  Currency operator+(Currency other) const;
  Currency operator-(Currency other) const;
  Currency operator-() const;
  Currency& operator+=(Currency other) { return *this = *this + other; }

  /// Product and quotient of two decimals, rounded half to even to four decimals from the exact result.
  /// Throw std::overflow_error when the result does not fit, std::domain_error on a division by zero.
  Currency MultipliedBy(Currency factor) const;
  Currency DividedBy(Currency divisor) const;

  /// The amount times `numerator` over `denominator`, rounded once, half to even. Throws as the two above.
  Currency ScaledBy(std::int64_t numerator, std::int64_t denominator) const;

  constexpr auto operator<=>(const Currency&) const = default;

 private:
  explicit constexpr Currency(std::int64_t count) : count_(count) {}

  std::int64_t count_ = 0;
};

}  // namespace tolvan
