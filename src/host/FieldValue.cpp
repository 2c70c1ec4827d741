#include "host/FieldValue.h"

#include <array>
#include <charconv>
#include <cmath>

#include "base/Text.h"

namespace tolvan {
namespace {

template <class... Cases>
struct Match : Cases... {
  using Cases::operator()...;
};
template <class... Cases>
Match(Cases...) -> Match<Cases...>;  // the compiler of the checks does not deduce it by itself

std::string NumberText(double number) {
  std::array<char, 40> buffer{};
  const auto written = std::to_chars(buffer.data(), buffer.data() + buffer.size(), number);
  return {buffer.data(), written.ptr};
}

std::optional<double> DoubleOf(const std::string& text) {
  double number = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
  if (error != std::errc() || end != text.data() + text.size()) return std::nullopt;
  return number;
}

std::optional<std::int64_t> WholePart(std::optional<double> number) {
  if (!number || !std::isfinite(*number) || std::fabs(*number) >= 9.2e18) return std::nullopt;
  return static_cast<std::int64_t>(*number);
}

}  // namespace

std::string TextOf(const FieldValue& value) {
  return std::visit(
      Match{[](std::monostate) { return std::string(); },
            [](bool flag) { return std::string(flag ? "True" : "False"); },
            [](std::int64_t number) { return std::to_string(number); },
            [](double number) { return NumberText(number); }, [](const DecimalText& decimal) { return decimal.text; },
            [](const DateTime& moment) { return moment.ToIsoText(); }, [](const std::string& text) { return text; }},
      value);
}

std::optional<Currency> CurrencyOf(const FieldValue& value) {
  if (const auto* number = std::get_if<double>(&value)) return Currency::FromDouble(*number);
  if (const auto* flag = std::get_if<bool>(&value)) return Currency::FromUnits(*flag ? 1 : 0);
  if (std::holds_alternative<DateTime>(value)) return std::nullopt;
  return Currency::Parse(TextOf(value));
}

std::optional<std::int64_t> IntegerOf(const FieldValue& value) {
  if (const auto* number = std::get_if<std::int64_t>(&value)) return *number;
  if (const auto* number = std::get_if<double>(&value)) return WholePart(*number);
  if (const auto* flag = std::get_if<bool>(&value)) return *flag ? 1 : 0;
  if (const auto* decimal = std::get_if<DecimalText>(&value)) return WholePart(DoubleOf(decimal->text));
  if (const auto* text = std::get_if<std::string>(&value)) return WholePart(DoubleOf(*text));
  return std::nullopt;
}

std::optional<bool> BooleanOf(const FieldValue& value) {
  if (const auto* text = std::get_if<std::string>(&value)) {
    if (EqualIgnoringCase(*text, "True")) return true;
    if (EqualIgnoringCase(*text, "False")) return false;
  }
  if (const auto* number = std::get_if<double>(&value)) return *number != 0;
  const std::optional<std::int64_t> number = IntegerOf(value);
  if (!number) return std::nullopt;
  return *number != 0;
}

}  // namespace tolvan
