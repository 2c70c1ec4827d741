// One field of a row, in the shape that the database delivers it, and the conversions every caller wants.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <variant>

#include "base/Calendar.h"
#include "base/Currency.h"

namespace tolvan {

/// A number that the database delivers as exact decimal text, such as a column of type DECIMAL.
struct DecimalText {
  std::string text;
  bool operator==(const DecimalText&) const = default;
};

/// std::monostate is NULL.
using FieldValue = std::variant<std::monostate, bool, std::int64_t, double, DecimalText, DateTime, std::string>;

inline bool IsNull(const FieldValue& value) {
  return std::holds_alternative<std::monostate>(value);
}

/// NULL is "", a boolean "True" or "False", a date its ISO text, a number its ordinary decimal form.
std::string TextOf(const FieldValue& value);

/// Half-even to four decimals; a text is read as a decimal. Nothing for NULL and for what is no number or does not fit.
std::optional<Currency> CurrencyOf(const FieldValue& value);

/// A whole number; a fraction is cut off. Nothing for NULL and for what is no number or does not fit.
std::optional<std::int64_t> IntegerOf(const FieldValue& value);

/// Not zero, or the text "True" in any casing. Nothing for NULL and for other texts that are no numbers.
std::optional<bool> BooleanOf(const FieldValue& value);

}  // namespace tolvan
