// A floating value as the text that a person would have typed.
#pragma once

#include <string>

namespace tolvan {

/// Up to 15 significant digits (what a spreadsheet shows of a number), a point, no grouping, no exponent and no zeros
/// at the end: 0.1 + 0.2 is "0.3", 1e20 is a 1 with twenty zeros, -0.0 is "0". Empty for a value that is not finite.
std::string PlainNumberText(double value);

}  // namespace tolvan
