// What a reader keeps of a workbook, whatever its form: the shared texts and the cell formats, to which cells refer by
// number, and the rows that nobody has asked for yet.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "host/SpreadsheetApplication.h"

namespace tolvan {

/// The texts that cells refer to by number, kept in a few large blocks: no allocation for each text, and a view of one
/// stays valid as long as the table.
class SharedStrings {
 public:
  /// Appends a text; it gets the next number, from 0. Throws HostError Damaged past the limits.
  void Add(std::string_view text);

  std::size_t Count() const { return entries_.size(); }

  /// `index` is below Count.
  std::string_view At(std::size_t index) const {
    const Entry entry = entries_[index];
    return std::string_view(blocks_[entry.block]).substr(entry.offset, entry.length);
  }

 private:
  struct Entry {
    std::uint32_t offset : 20;
    std::uint32_t block : 12;
    std::uint32_t length;
  };

  std::vector<std::string> blocks_;  // with room from the start, so that their text never moves
  std::vector<Entry> entries_;
};

/// A workbook stores dates as numbers; only the number format distinguishes them. Whether a format code such as
/// "dd/mm/yyyy" or "[h]:mm" shows a date or time in its first section. Colours, conditions, locales and literal text do
/// not count.
bool ShowsDate(std::string_view formatCode);

/// What a date of a workbook that counts from 1904 has to grow by to be one of those that count from 1900, in days.
inline constexpr double daysFrom1900To1904 = 1462;

/// The cell formats of one workbook, by number in the order of its list.
class CellFormats {
 public:
  /// A format code of the workbook; it comes before the built-in one of the same number. Throws HostError Damaged past
  /// the limit, as AddCellFormat does.
  void DefineFormat(std::uint32_t formatId, std::string_view code);
  void AddCellFormat(std::uint32_t formatId);

  /// False for a cell format that the workbook does not have.
  bool IsDate(std::size_t cellFormat) const { return cellFormat < isDate_.size() && isDate_[cellFormat] != 0; }

 private:
  std::unordered_map<std::uint32_t, bool> defined_;
  std::vector<std::uint8_t> isDate_;
};

/// The error text of a formula that was stored without a result, as programs that do not calculate leave it. It is no
/// empty cell: taken for one, it would end a list or drop a price silently.
inline constexpr std::string_view notCalculatedText = "#SIN CALCULAR";

/// The error text of a number beyond what a cell holds, as the programs show it.
inline constexpr std::string_view notANumberText = "#NUM!";

/// Rows that a parser has finished and nobody has asked for yet, and the row it is in. Storage is reused, so that a
/// cell costs no allocation.
class RowBlock {
 public:
  /// Begins a row. Throws HostError Damaged unless it is below the one before, and past the last row of a sheet.
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
