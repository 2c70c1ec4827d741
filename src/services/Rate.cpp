#include "services/Rate.h"

#include <charconv>

namespace tolvan {
namespace {

constexpr std::int64_t one = 100'000'000;
constexpr double largest = 1e7;

std::optional<double> NumberOf(const FieldValue& value) {
  if (IsNull(value) || std::holds_alternative<DateTime>(value)) return std::nullopt;
  const std::string text = TextOf(value);
  double number = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
  if (error != std::errc() || end != text.data() + text.size()) return std::nullopt;
  return number;
}

}  // namespace

std::optional<Rate> Rate::Of(const FieldValue& value) {
  const std::optional<double> number = NumberOf(value);
  if (!number || !(*number >= 0 && *number < largest)) return std::nullopt;
  // Ten-thousandths of ten-thousandths: the conversion rounds the decimal text, not its binary neighbour.
  const std::optional<Currency> scaled = Currency::FromDouble(*number * static_cast<double>(Currency::unit));
  if (!scaled) return std::nullopt;
  return Rate(scaled->TenThousandths());
}

Currency Rate::WithTax(Currency net) const {
  return net.ScaledBy(one + count_, one);
}

Currency Rate::WithoutTax(Currency withTax) const {
  return withTax.ScaledBy(one, one + count_);
}

Currency Rate::Divide(Currency amount) const {
  return amount.ScaledBy(one, count_);
}

}  // namespace tolvan
