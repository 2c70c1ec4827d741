// Rows that a parser has finished and nobody has asked for yet, and the row it is in. Storage is used again, so that a
// cell costs no allocation.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "host/SpreadsheetApplication.h"
#include "spreadsheet/SharedStrings.h"

namespace tolvan {

/// The error text of a formula that was stored without a result, as programs that do not calculate leave it. It is no
/// empty cell: taken for one it would end a list or drop a price without a word.
inline constexpr std::string_view notCalculatedText = "#SIN CALCULAR";

/// The error text of a number that is past what a cell holds; the programs show it so, too.
inline constexpr std::string_view notANumberText = "#NUM!";

class RowBlock {
 public:
  /// Begins a row. Rows come in ascending order; HostError Damaged otherwise and past the last row of a sheet.
  void BeginRow(std::uint32_t number);

  /// Adds a cell to the row begun, in any order of columns; of two in one column the later counts. Throws HostError
  /// Damaged for a column or a quantity that no sheet has.
  void AddNumber(std::uint32_t column, CellKind kind, double number);
  void AddText(std::uint32_t column, CellKind kind, std::string_view text);
  void AddShared(std::uint32_t column, std::uint32_t index);

  /// The row is complete; one without cells is dropped.
  void EndRow();

  /// The next complete row; false when there is none. `row` is valid until the next call of any function here.
  /// `strings` holds every index that was added.
  bool Take(SheetRow& row, const SharedStrings& strings);

 private:
  enum class Place : std::uint8_t { None, Here, Shared };

  struct StoredCell {
    double number = 0;
    std::uint32_t textStart = 0;  // in text_, or the shared index
    std::uint32_t textLength = 0;
    std::uint32_t column = 0;
    CellKind kind = CellKind::Empty;
    Place place = Place::None;
  };

  struct StoredRow {
    std::uint32_t number = 0;
    std::uint32_t firstCell = 0;
    std::uint32_t endCell = 0;
  };

  void Add(const StoredCell& cell);
  void SortLastRow();
  void DropTaken();

  std::vector<StoredCell> cells_;
  std::vector<StoredRow> rows_;
  std::string text_;
  std::size_t nextRow_ = 0;
  std::uint32_t currentRow_ = 0;
  std::size_t currentFirstCell_ = 0;
  std::size_t currentFirstText_ = 0;
  bool ascending_ = true;
  std::vector<SheetCell> delivered_;
};

}  // namespace tolvan
