#include "host/DatabaseServices.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>

#include "base/Text.h"

namespace tolvan {
namespace {

/// The fewest digits that read back as the same number, never with an exponent.
std::string NumberText(double number) {
  std::array<char, 400> buffer{};  // the longest is 5e-324, with 326 characters
  const auto written = std::to_chars(buffer.data(), buffer.data() + buffer.size(), number, std::chars_format::fixed);
  return {buffer.data(), written.ptr};
}

std::optional<double> DoubleOf(const std::string& text) {
  double number = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
  if (error != std::errc() || end != text.data() + text.size() || !std::isfinite(number)) return std::nullopt;
  return number;
}

std::optional<std::int64_t> WholePartOf(std::optional<double> number) {
  if (!number || !std::isfinite(*number) || std::fabs(*number) >= 9.2e18) return std::nullopt;
  return static_cast<std::int64_t>(*number);
}

/// A whole number of up to nineteen digits must not go through a floating value, which holds fifteen.
std::optional<std::int64_t> WholePartOf(const std::string& text) {
  std::int64_t number = 0;
  const char* const last = text.data() + text.size();
  const auto [end, error] = std::from_chars(text.data(), last, number);
  const bool onlyDecimalsFollow =
      end == last || (*end == '.' && std::all_of(end + 1, last, [](char c) { return c >= '0' && c <= '9'; }));
  if (error == std::errc() && onlyDecimalsFollow) return number;
  return WholePartOf(DoubleOf(text));
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
  if (const auto* number = std::get_if<double>(&value)) return WholePartOf(*number);
  if (const auto* flag = std::get_if<bool>(&value)) return *flag ? 1 : 0;
  if (const auto* decimal = std::get_if<DecimalText>(&value)) return WholePartOf(decimal->text);
  if (const auto* text = std::get_if<std::string>(&value)) return WholePartOf(*text);
  return std::nullopt;
}

std::optional<bool> BooleanOf(const FieldValue& value) {
  if (const auto* flag = std::get_if<bool>(&value)) return *flag;
  if (const auto* number = std::get_if<std::int64_t>(&value)) return *number != 0;
  if (IsNull(value) || std::holds_alternative<DateTime>(value)) return std::nullopt;
  const std::string text = TextOf(value);
  if (EqualIgnoringCase(text, "True")) return true;
  if (EqualIgnoringCase(text, "False")) return false;
  // Not by way of the whole number: 0.5 is not zero.
  const std::optional<double> number = DoubleOf(text);
  if (!number) return std::nullopt;
  return *number != 0;
}

std::size_t Recordset::RequireField(std::string_view name) const {
  const std::optional<std::size_t> found = FindField(name);
  if (!found) throw HostError(HostErrorKind::Statement, "la consulta no devuelve el campo " + std::string(name));
  return *found;
}

}  // namespace tolvan
