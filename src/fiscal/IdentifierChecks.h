// The two check-digit rules of Dominican tax identifiers.
#pragma once

#include <optional>
#include <string_view>

namespace tolvan {

/// The check digit of a company's registry number, modulus 11. Nothing unless `body` is exactly eight digits.
std::optional<char> ExpectedRncCheckDigit(std::string_view body);

/// The sum of the characters' values, weighted 1, 2, 1, 2, … from the last one, each product counted by its digits, is
/// a multiple of `modulus`. False unless the text is exactly eleven hexadecimal digits.
bool PassesCedulaCheck(std::string_view text, int modulus = 10);

}  // namespace tolvan
