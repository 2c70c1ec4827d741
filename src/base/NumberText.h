// Numbers and amounts as the text that people read and type.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "base/Currency.h"

namespace tolvan {

/// A floating value as a person would have typed it: up to 15 significant digits (what a spreadsheet shows of a
/// number), a point, no grouping, no exponent and no zeros at the end: 0.1 + 0.2 is "0.3", 1e20 is a 1 with twenty
/// zeros, -0.0 is "0". Empty for a value that is not finite.
std::string PlainNumberText(double value);

/// A non-negative number as decimal text with leading zeros up to `width` characters.
std::string PaddedNumber(int number, std::size_t width);

/// An amount by a display pattern such as "#,##0.00": a "," in it groups thousands, and the "0" and "#" after its
/// point are the decimals shown, always and only when needed. Rounded half away from zero. Text around the digits
/// stands as it is. `separator` is the grouping separator; the decimal sign is a point, or a comma where the
/// separator is a point.
std::string FormatMoney(Currency amount, std::string_view pattern, std::string_view separator);

}  // namespace tolvan
