#include "base/Currency.h"

#include <gmock/gmock.h>

#include <array>
#include <charconv>
#include <cmath>
#include <limits>
#include <optional>
#include <random>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

namespace tolvan {
namespace {

constexpr std::int64_t largest = std::numeric_limits<std::int64_t>::max();

Currency Count(std::int64_t tenThousandths) {
  return Currency::FromTenThousandths(tenThousandths);
}

// Among them ties, and what lies just past one.
TEST(Currency, ReadsDecimalTextRoundingTiesToEven) {
  const std::vector<std::pair<std::string, std::optional<std::int64_t>>> cases = {
      {"+3.", 30'000},
      {".5", 5'000},
      {"0012.3400", 123'400},
      {"1e3", 10'000'000},
      {"12.5E-2", 1'250},
      {"-1.00015", -10'002},
      {"5e-5", 0},
      {"0.00015", 2},
      {"0.000050000000000000000000001", 1},
      {"0.00004999999999999999999999", 0},
      {"1e-2147483648", 0},
      {"922337203685477.5807", largest},
      {"922337203685477.58075", std::nullopt},
      {"-922337203685477.5807", -largest},
      {"18446744073709551616", std::nullopt},
      {"1e2147483647", std::nullopt},
      {"10e2147483647", std::nullopt}};
  for (const auto& [text, expected] : cases) {
    const std::optional<Currency> read = Currency::Parse(text);
    EXPECT_EQ(read ? std::optional(read->TenThousandths()) : std::nullopt, expected) << '"' << text << '"';
  }
  for (const char* const refused :
       {"", "-", ".", "e5", "1e", "1e+-5", "1e5.0", " 1", "1 ", "1,5", "1.2.3", "--1", "0x10", "inf"}) {
    EXPECT_EQ(Currency::Parse(refused), std::nullopt) << '"' << refused << '"';
  }
}

TEST(Currency, TakesFloatingValuesAsTheNumberAPersonTyped) {
  const std::vector<std::pair<double, std::optional<std::int64_t>>> cases = {
      {-2.00025, -20'002},
      {0.1 + 0.2, 3'000},
      {-0.0, 0},
      {1e-300, 0},
      {123'456'789.125, 1'234'567'891'250},
      {922'337'203'685'477.0, 9'223'372'036'854'770'000},
      {922'337'203'685'478.0, std::nullopt},
      {1e300, std::nullopt},
      {std::numeric_limits<double>::infinity(), std::nullopt},
      {std::numeric_limits<double>::quiet_NaN(), std::nullopt}};
  for (const auto& [value, expected] : cases) {
    const std::optional<Currency> taken = Currency::FromDouble(value);
    EXPECT_EQ(taken ? std::optional(taken->TenThousandths()) : std::nullopt, expected) << value;
  }
}

TEST(Currency, ShowsEveryFormOfAnAmount) {
  // Count, text, shortest text, with cents, whole units.
  const std::vector<std::pair<std::int64_t, std::array<const char*, 4>>> cases = {
      {0, {"0.0000", "0", "0.00", "0"}},
      {-1, {"-0.0001", "-0.0001", "0.00", "0"}},
      {-500, {"-0.0500", "-0.05", "-0.05", "0"}},
      {4'999, {"0.4999", "0.4999", "0.50", "0"}},
      {5'000, {"0.5000", "0.5", "0.50", "1"}},  // half away from zero, also where half to even differs
      {-25'000, {"-2.5000", "-2.5", "-2.50", "-3"}},
      {10'050, {"1.0050", "1.005", "1.01", "1"}},
      {-10'049, {"-1.0049", "-1.0049", "-1.00", "-1"}},
      {1'000'000, {"100.0000", "100", "100.00", "100"}},
      {largest, {"922337203685477.5807", "922337203685477.5807", "922337203685477.58", "922337203685478"}},
      {std::numeric_limits<std::int64_t>::min(),
       {"-922337203685477.5808", "-922337203685477.5808", "-922337203685477.58", "-922337203685478"}}};
  for (const auto& [count, texts] : cases) {
    const Currency amount = Count(count);
    EXPECT_THAT(
        (std::array{amount.ToText(), amount.ToShortestText(), amount.ToRoundedText(2), amount.ToRoundedText(0)}),
        testing::ElementsAreArray(texts));
  }
}

TEST(Currency, RefusesResultsThatDoNotFit) {
  EXPECT_EQ(Currency::FromUnits(-922'337'203'685'477).ToText(), "-922337203685477.0000");
  EXPECT_THROW(Currency::FromUnits(922'337'203'685'478), std::overflow_error);
  EXPECT_THROW(Count(largest) + Count(1), std::overflow_error);
  EXPECT_THROW(Count(-largest) - Count(2), std::overflow_error);
  EXPECT_THROW(-Count(std::numeric_limits<std::int64_t>::min()), std::overflow_error);
  EXPECT_THROW(Count(1).DividedBy(Count(0)), std::domain_error);
  // The exact quotient rounds up to 2^64, where a 64-bit count would begin again at zero.
  EXPECT_THROW(Count(4'611'570'729'159'158'925).MultipliedBy(Count(40'001)), std::overflow_error);
}

std::uint64_t Magnitude(std::int64_t value) {
  return static_cast<std::uint64_t>(value < 0 ? -value : value);
}

/// a * b / divisor must be `result`: off by at most one half, and at exactly one half even. Nothing as the result means
/// that it does not fit. Floating arithmetic tells the size to fourteen digits; among the results so near, what
/// arithmetic modulo 2^64 leaves over is the exact remainder.
bool IsRounded(std::int64_t a, std::int64_t b, std::int64_t divisor, std::optional<std::int64_t> result) {
  const double about = static_cast<double>(a) * static_cast<double>(b) / static_cast<double>(divisor);
  const double accuracy = std::abs(about) * 1e-14;
  if (!result) return std::abs(about) + accuracy >= std::ldexp(1, 63);
  if (std::abs(about - static_cast<double>(*result)) > 0.5 + accuracy) return false;
  const auto modular = [](std::int64_t value) { return static_cast<std::uint64_t>(value); };
  const auto remainder = static_cast<std::int64_t>(modular(a) * modular(b) - modular(*result) * modular(divisor));
  const std::uint64_t twiceOff = 2 * Magnitude(remainder);
  return twiceOff < Magnitude(divisor) || (twiceOff == Magnitude(divisor) && *result % 2 == 0);
}

/// Amounts of every size, from a single ten-thousandth to the whole range.
std::int64_t AnyAmount(std::mt19937_64& random) {
  const auto bits = static_cast<unsigned>(random() % 63);
  const auto magnitude = static_cast<std::int64_t>((random() >> 1) >> bits);
  return random() % 2 == 0 ? magnitude : -magnitude;
}

/// Nothing when the result does not fit.
template <class Calculation>
std::optional<std::int64_t> ResultOf(const Calculation& calculation) {
  try {
    return calculation().TenThousandths();
  } catch (const std::overflow_error&) {
    return std::nullopt;
  }
}

TEST(Currency, ProductsAndQuotientsAreRoundedFromTheExactResult) {
  std::mt19937_64 random(20'240'131);
  int fitting = 0;
  for (int round = 0; round < 50'000; ++round) {
    const std::int64_t a = AnyAmount(random);
    const std::int64_t b = AnyAmount(random);
    const auto product = ResultOf([&] { return Count(a).MultipliedBy(Count(b)); });
    if (product) ++fitting;
    ASSERT_TRUE(IsRounded(a, b, Currency::unit, product)) << a << " * " << b;
    if (b == 0) continue;
    const auto quotient = ResultOf([&] { return Count(a).DividedBy(Count(b)); });
    ASSERT_TRUE(IsRounded(a, Currency::unit, b, quotient)) << a << " / " << b;
  }
  EXPECT_GT(fitting, 10'000);
  EXPECT_LT(fitting, 40'000);
  EXPECT_EQ(Count(5'000).MultipliedBy(Count(3)).TenThousandths(), 2);  // 1.5: ties go to even, both ways
  EXPECT_EQ(Count(5'000).MultipliedBy(Count(-5)).TenThousandths(), -2);
  EXPECT_EQ(Count(3).MultipliedBy(Count(1'667)).TenThousandths(), 1);  // 0.5001: just past a tie
  EXPECT_EQ(Count(1).DividedBy(Count(-20'000)).TenThousandths(), 0);
}

TEST(Currency, TextAndFloatingValueReadBackAsTheSameAmount) {
  std::mt19937_64 random(20'240'131);
  for (int round = 0; round < 20'000; ++round) {
    const Currency amount = Count(AnyAmount(random));
    ASSERT_EQ(Currency::Parse(amount.ToText()), amount);
    ASSERT_EQ(Currency::Parse(amount.ToShortestText()), amount);
    // Fifteen digits are what a floating value surely holds.
    if (Magnitude(amount.TenThousandths()) < 1'000'000'000'000'000) {
      ASSERT_EQ(Currency::FromDouble(amount.ToDouble()), amount) << amount.ToText();
    }
    // With more decimals than are kept: as its shortest text is rounded.
    const double finer = amount.ToDouble() / 1000;
    std::array<char, 40> text{};
    const char* end = std::to_chars(text.data(), text.data() + text.size(), finer).ptr;
    ASSERT_EQ(Currency::FromDouble(finer), Currency::Parse({text.data(), static_cast<std::size_t>(end - text.data())}));
  }
}

}  // namespace
}  // namespace tolvan
