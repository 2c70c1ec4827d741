// Tax rates and conversion factors, and the one place where a price with tax is made from a net price and the reverse.
// What a template is filled with and what a workbook is compared with both come from here, so that a filled template
// that is imported back changes nothing.
#pragma once

#include <cstdint>
#include <optional>

#include "base/Currency.h"
#include "host/DatabaseServices.h"

namespace tolvan {

/// A fraction or factor with eight decimals, never negative.
class Rate {
 public:
  /// Zero.
  constexpr Rate() = default;

  /// Rounded to eight decimals. Nothing for what is no number, negative or from 10,000,000 on.
  static std::optional<Rate> Of(const FieldValue& value);

  constexpr bool IsZero() const { return count_ == 0; }

  /// The price with this rate added, and the net price inside a price with tax; each rounded once, half to even.
  /// Throw std::overflow_error when the result does not fit.
  Currency WithTax(Currency net) const;
  Currency WithoutTax(Currency withTax) const;

  /// amount / factor, half to even. Throws std::overflow_error, and std::domain_error when this is zero.
  Currency Divide(Currency amount) const;

 private:
  explicit constexpr Rate(std::int64_t count) : count_(count) {}

  std::int64_t count_ = 0;  // hundred-millionths
};

}  // namespace tolvan
