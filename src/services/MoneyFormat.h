#pragma once

#include <string>
#include <string_view>

#include "base/Currency.h"

namespace tolvan {

/// An amount by a display pattern such as "#,##0.00": a "," in it groups thousands, and the "0" and "#" behind its
/// point are the decimals shown, always and only when needed. Rounded half away from zero. Text around the digits
/// stands as it is. `separator` is the grouping separator; the decimal sign is a point, or a comma where the
/// separator is a point.
std::string FormatMoney(Currency amount, std::string_view pattern, std::string_view separator);

}  // namespace tolvan
