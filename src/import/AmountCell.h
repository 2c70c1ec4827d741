// Amounts on their way from a workbook's cells and into them.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "base/Currency.h"
#include "host/SheetRow.h"

namespace tolvan {

/// An amount that a workbook gives or does not give.
struct GivenAmount {
  std::optional<Currency> value;

  bool Given() const { return value.has_value(); }
  Currency OrZero() const { return value.value_or(Currency()); }
};

/// Reads an amount. What is no number (text, date, boolean, error) is not given, and `remarks` tells; a number that no
/// item can have, negative or too large, is not given, and `reason` tells why the row cannot be processed. Both texts
/// are Spanish and begin with `name`; they are appended, "; " between.
GivenAmount ReadAmount(const SheetCell& cell, std::string_view name, std::string& remarks, std::string& reason);

/// Appends a sentence to a list of them.
void AppendSentence(std::string& sentences, std::string_view sentence);

/// The amount with the fifteen significant digits that a cell keeps. The same amount below 100,000,000,000; two amounts
/// are equal for a workbook when this makes them equal.
Currency AmountInCell(Currency amount);

}  // namespace tolvan
