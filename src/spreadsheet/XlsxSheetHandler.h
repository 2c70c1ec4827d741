// Turns the XML of a worksheet part into rows of cells.
#pragma once

#include <cstdint>
#include <string>

#include "spreadsheet/WorkbookTables.h"
#include "spreadsheet/XlsxParts.h"
#include "spreadsheet/XmlStream.h"

namespace tolvan {

class XlsxSheetHandler : public XmlHandler {
 public:
  /// Puts the rows into `rows`; everything must outlive the object.
  XlsxSheetHandler(RowBlock& rows, const XlsxWorkbook& workbook) : rows_(rows), workbook_(workbook) {}

  void StartElement(std::string_view name, const XmlAttributes& attributes) override;
  void EndElement() override;
  void Text(std::string_view piece) override;

 private:
  /// Where the parser is. What is met anywhere else is skipped as a whole.
  enum class Place { Document, Sheet, Data, Row, Cell, Value, Inline };

  /// The attribute "t" of a cell.
  enum class Type { Number, Shared, FormulaText, InlineText, Boolean, Error, IsoDate };

  static Type TypeNamed(std::string_view name);

  void StartChild(std::string_view name, const XmlAttributes& attributes);
  void StartRow(const XmlAttributes& attributes);
  void StartCell(const XmlAttributes& attributes);
  void TakeReference(std::string_view reference);
  void OpenRow();
  void EndRow();
  void EndCell();
  void EndCellWithValue();
  void AddValueText(CellKind kind);
  void AddShared();
  void AddNumber();
  void AddIsoDate();
  [[noreturn]] void FailValue() const;

  RowBlock& rows_;
  const XlsxWorkbook& workbook_;

  Place place_ = Place::Document;
  unsigned skipped_ = 0;  // depth inside an element that is skipped

  std::uint32_t row_ = 0;
  bool rowOpen_ = false;  // its number is settled; it may come from the first cell
  bool rowHasNumber_ = false;
  std::uint32_t column_ = 0;

  Type type_ = Type::Number;
  std::uint32_t format_ = 0;
  bool hasFormula_ = false;
  bool hasValue_ = false;
  bool hasInline_ = false;
  std::string value_;
  StringItem inline_;
};

}  // namespace tolvan
