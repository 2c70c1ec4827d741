// How the cells of a workbook become codes, descriptions and amounts, and amounts become cells. Blanks are U+0020 only;
// tabs and other white space stay.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "base/Currency.h"
#include "host/SpreadsheetApplication.h"

namespace tolvan {

inline constexpr std::size_t itemCodeLength = 14;
inline constexpr std::size_t shortCodeLength = 12;
inline constexpr std::size_t descriptionLength = 125;

/// Used where the source names no brand, department or list.
inline constexpr std::string_view defaultCode = "DEF";

/// Without blanks and line ends, the first `length` characters, in upper case.
std::string CleanCode(std::string_view text, std::size_t length);

/// The code, or "DEF" in place of an empty one.
std::string CodeOrDefault(std::string_view code);

/// The first `length` characters in upper case, without hyphens, slashes, points and line ends, trimmed, each pair of
/// blanks made one. One pass only, so that three blanks become two: deliberate, stored descriptions depend on it.
std::string CleanDescription(std::string_view text, std::size_t length);

/// What is made of model and brand names: without blanks, hyphens, slashes and points, the first 12 characters, in
/// upper case.
std::string CleanModelCode(std::string_view text);

/// An amount that a workbook gives or does not give.
struct GivenAmount {
  std::optional<Currency> value{};
  bool unusable = false;  ///< the cell holds something that is no number

  bool Given() const { return value.has_value(); }
  Currency OrZero() const { return value.value_or(Currency()); }
};

/// What there is to say of values that stand in a row and are not used, each a Spanish sentence without its point.
using Remarks = std::vector<std::string>;

/// Whether a cell holds nothing: it is empty, or an empty text.
bool HoldsNothing(const SheetCell& cell);

/// "el costo no es un número (gratis) y no se toma en cuenta", of a cell that holds something.
std::string NotANumber(const SheetCell& cell, std::string_view name);

/// Appends to `reason` that a cell is an error such as #N/A; nothing for any other cell.
void RefuseError(const SheetCell& cell, std::string_view name, std::string& reason);

/// Reads an amount. What is no number (text, date, boolean, error) is not given, and a remark says so; a number that no
/// item can have, negative or too large, is not given, and `reason` says why the row cannot be processed. Both texts
/// begin with `name`; that of the reason is appended.
GivenAmount ReadAmount(const SheetCell& cell, std::string_view name, Remarks& remarks, std::string& reason);

/// The amount with the fifteen significant digits that a cell keeps. The same amount below 100,000,000,000; two amounts
/// are equal for a workbook when this makes them equal.
Currency AmountInCell(Currency amount);

}  // namespace tolvan
