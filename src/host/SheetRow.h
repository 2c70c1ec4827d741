// What a worksheet reader delivers: rows of typed cells, raw values rather than formatted text.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>

namespace tolvan {

enum class CellKind : std::uint8_t {
  Empty,
  Text,     ///< also the empty text, which is not the same as Empty
  Number,   ///< always finite
  Date,     ///< a number whose format shows a date or a time of day
  Boolean,  ///< the number is 1 or 0
  Error,    ///< such as "#N/A" in the text
};

struct SheetCell {
  std::uint32_t column = 0;  ///< from 1
  CellKind kind = CellKind::Empty;
  double number =
      0;  ///< Number and Boolean; of Date the days since 1899-12-30, also in a workbook that counts from 1904
  std::string_view text;  ///< Text and Error, UTF-8 without NUL

  /// The cell as a text column takes it: a text as it stands, a number (a date's too) as PlainNumberText, a boolean
  /// "True" or "False", an error its text, an empty cell "".
  std::string AsText() const;

  /// The same; either the cell's own text or made in `scratch`.
  std::string_view AsText(std::string& scratch) const;
};

struct SheetRow {
  std::uint32_t number = 0;          ///< from 1
  std::span<const SheetCell> cells;  ///< those that are not Empty, ascending by column, each column once

  /// The cell of a column (from 1); an Empty one when the row has none there.
  const SheetCell& At(std::uint32_t column) const;
};

}  // namespace tolvan
