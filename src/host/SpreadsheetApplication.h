// The spreadsheet application: reads the first worksheet of a workbook, as rows of typed cells with raw values rather
// than formatted text, and makes new workbooks. Where it is an installed program that is driven from outside, it may be
// missing; callers begin with Start. Paths are absolute.
#pragma once

#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <variant>

#include "host/HostError.h"
#include "host/UserInterface.h"

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

/// One worksheet, read from its first row to its last in one go. The workbook stays open, unchanged and unsaved, until
/// the object is destroyed.
class WorksheetReader {
 public:
  virtual ~WorksheetReader() = default;

  /// Goes to the next row that holds a cell which is not Empty, in ascending order; false after the last one. What
  /// `row` points to is valid until the next call. Throws HostError as OpenFirstWorksheet does; nothing may be read
  /// after that.
  virtual bool NextRow(SheetRow& row) = 0;
};

/// A cell to be written. std::monostate leaves it empty; a number must be finite; texts are UTF-8 and fit a cell.
using NewCell = std::variant<std::monostate, std::string_view, double>;

/// Whether a cell holds the text: spreadsheet programs take 32,767 UTF-16 units, so characters beyond the basic plane,
/// such as emoji, count two.
bool FitsCell(std::string_view text);

enum class NewRowStyle { Data, Heading };

/// A workbook that is being made. Nothing of it is seen before SaveAs or OpenForUser, one of which ends it.
class NewWorkbook {
 public:
  virtual ~NewWorkbook() = default;

  /// Writes the cells from column 1 on into the row after the last one written; the first is the one below the
  /// template's headings. Throws HostError InvalidValue (a value that no cell holds, more rows than a sheet has), Full
  /// or Failed.
  virtual void AppendRow(std::span<const NewCell> cells, NewRowStyle style = NewRowStyle::Data) = 0;

  /// Writes the file, whole or not at all, over one that is there. The name must end in ".xlsx" (InvalidValue
  /// otherwise). Throws HostError.
  virtual void SaveAs(std::string_view path) = 0;

  /// Shows the workbook to the user, who goes on with it. The path of the file made for that; empty where the
  /// application keeps it unsaved. Throws HostError; a file made is kept then, and the error's context names it.
  virtual std::string OpenForUser() = 0;
};

class SpreadsheetApplication {
 public:
  virtual ~SpreadsheetApplication() = default;

  /// Makes the application ready; a second call does nothing. Throws HostError Unreachable when it is not installed or
  /// does not answer.
  virtual void Start() = 0;

  /// Opens a workbook read-only and its first worksheet in tab order, hidden or not. Throws HostError: Unreachable when
  /// there is no such file, Access when it may not be read, Interrupted, and Damaged for everything that is wrong with
  /// the content (another format, a password, a truncated file, one that is changed while it is read, a limit
  /// exceeded); its text says which, in Spanish, and its context is the path. `interruption` is asked while reading and
  /// must outlive the reader.
  virtual std::unique_ptr<WorksheetReader> OpenFirstWorksheet(std::string_view path,
                                                              const Interruption& interruption) = 0;

  /// Begins a new workbook that holds the headings of a template: its first `headingRows` rows. An empty path begins
  /// an empty workbook. Throws HostError as OpenFirstWorksheet does.
  virtual std::unique_ptr<NewWorkbook> CreateFromTemplate(std::string_view templatePath, std::uint32_t headingRows) = 0;
};

}  // namespace tolvan
