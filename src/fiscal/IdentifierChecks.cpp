#include "fiscal/IdentifierChecks.h"

#include <array>
#include <cstddef>

namespace tolvan {
namespace {

/// -1 for what is no hexadecimal digit.
int HexadecimalValue(char c) {
  if (c >= '0' && c <= '9') return c - '0';
  if (c >= 'a' && c <= 'f') return c - 'a' + 10;
  if (c >= 'A' && c <= 'F') return c - 'A' + 10;
  return -1;
}

}  // namespace

std::optional<char> ExpectedRncCheckDigit(std::string_view body) {
  constexpr std::array<int, 8> weights = {7, 9, 8, 6, 5, 4, 3, 2};
  if (body.size() != weights.size()) return std::nullopt;
  int sum = 0;
  for (std::size_t index = 0; index < weights.size(); ++index) {
    if (body[index] < '0' || body[index] > '9') return std::nullopt;
    sum += (body[index] - '0') * weights[index];
  }
  const int rest = sum % 11;
  if (rest == 0) return '2';
  if (rest == 1) return '1';
  return static_cast<char>('0' + 11 - rest);
}

bool PassesCedulaCheck(std::string_view text, int modulus) {
  if (text.size() != 11) return false;
  int total = 0;
  int weight = 1;
  for (std::size_t left = text.size(); left > 0; --left) {
    const int value = HexadecimalValue(text[left - 1]);
    if (value < 0) return false;
    const int product = value * weight;
    total += product % modulus + product / modulus;
    weight = 3 - weight;
  }
  return total % modulus == 0;
}

}  // namespace tolvan
