#include "import/WorkbookReading.h"

#include <algorithm>

#include "base/Text.h"

namespace tolvan {
namespace {

/// Whether a person would see anything in the row.
bool HoldsData(const SheetRow& row) {
  return std::any_of(row.cells.begin(), row.cells.end(), [](const SheetCell& cell) {
    return cell.kind != CellKind::Text || !TrimBlanks(cell.text).empty();
  });
}

class DataRows {
 public:
  DataRows(std::uint32_t firstRow, StatusDisplay& status, const DataRowTaker& take)
      : next_(firstRow), status_(status), take_(take) {}

  void Add(const SheetRow& row) {
    if (end_.Early()) {
      if (HoldsData(row)) ++end_.following;
      return;
    }
    status_.SetText("Analizando fila " + std::to_string(next_));
    // Behind a gap nothing is read, even where rows hold data.
    const bool isGap = row.number != next_;
    end_.why = isGap ? "la fila está vacía" : take_(row);
    if (end_.why.empty()) {
      ++next_;
      return;
    }
    end_.row = next_;
    leftData_ = !isGap && HoldsData(row);
    if (isGap && HoldsData(row)) ++end_.following;
  }

  ReadingEnd End() const { return leftData_ || end_.following > 0 ? end_ : ReadingEnd(); }

 private:
  std::uint32_t next_;
  StatusDisplay& status_;
  const DataRowTaker& take_;
  ReadingEnd end_;
  bool leftData_ = false;  // in the row that ended the data
};

}  // namespace

ReadingEnd ReadDataRows(SpreadsheetApplication& application, std::string_view path, const SheetLayout& layout,
                        const Interruption& interruption, StatusDisplay& status, const DataRowTaker& take) {
  const auto reader = application.OpenFirstWorksheet(path, interruption);
  DataRows rows(layout.firstRow, status, take);
  HeadingKind headings = HeadingKind::None;
  for (SheetRow row; reader->NextRow(row);) {
    if (interruption.Requested()) throw HostError(HostErrorKind::Interrupted, "", std::string(path));
    if (row.number < layout.firstRow) {
      headings = std::max(headings, CheckHeadingRow(layout, row));
    } else {
      rows.Add(row);
    }
  }
  ReadingEnd end = rows.End();
  end.foreignHeadings = layout.namesItsColumns && headings == HeadingKind::Foreign;
  return end;
}

}  // namespace tolvan
