// Reads the first worksheet of an .xls. Only the shared strings and a piece of the sheet are in memory.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <vector>

#include "host/SpreadsheetApplication.h"
#include "spreadsheet/BiffRecords.h"
#include "spreadsheet/BiffWorkbook.h"
#include "spreadsheet/RowBlock.h"
#include "spreadsheet/WorkbookFile.h"

namespace tolvan {

class XlsReader : public WorksheetReader {
 public:
  XlsReader(std::unique_ptr<WorkbookFile> file, const Interruption& interruption);
  bool NextRow(SheetRow& row) override;

 private:
  /// Where a cell record lies.
  struct CellPlace {
    std::uint32_t row;
    std::uint64_t position;
  };

  void BeginSheet();
  std::optional<BiffRecord> NextCell();
  std::optional<BiffRecord> NextCellInStream();
  bool RowsAscend();
  void SortCells();
  void TakeCell(const BiffRecord& record);
  void TakeFormula(const BiffRecord& record, std::uint32_t column);
  void TakeFormulaText(std::uint32_t column);
  void TakeMultipleRk(const BiffRecord& record, std::uint32_t column);
  void AddShared(const BiffRecord& record, std::uint32_t column);
  void AddNumber(std::uint32_t column, std::uint16_t cellFormat, double number);
  void AddBooleanOrError(std::uint32_t column, unsigned value, bool isError);

  std::unique_ptr<WorkbookFile> file_;
  BiffRecords records_;
  BiffWorkbook workbook_;
  RowBlock rows_;
  std::uint64_t firstRecord_ = 0;  // behind the beginning of the sheet
  unsigned depth_ = 1;             // of streams inside the sheet's own
  std::vector<CellPlace> sorted_;  // only when the rows are not in order
  std::size_t nextSorted_ = 0;
  std::optional<std::uint32_t> openRow_;
  bool ended_ = false;
};

}  // namespace tolvan
