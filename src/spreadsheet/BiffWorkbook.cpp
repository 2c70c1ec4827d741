#include "spreadsheet/BiffWorkbook.h"

#include <optional>
#include <vector>

#include "spreadsheet/BiffText.h"
#include "spreadsheet/LittleEndian.h"
#include "spreadsheet/WorkbookFailure.h"
#include "spreadsheet/WorkbookLimits.h"

namespace tolvan {
namespace {

constexpr std::uint16_t versionBiff8 = 0x0600;
constexpr std::uint16_t contentGlobals = 0x0005;
constexpr unsigned char typeWorksheet = 0;

void CheckBegin(const BiffRecord& record) {
  if (record.kind != biff::beginOfStream || !record.Holds(4))
    FailDamaged("el libro no comienza como un libro de Excel");
  if (ReadU16(record.content.data()) != versionBiff8)
    FailDamaged("el libro es de una versión de Excel anterior a la 97; guárdelo de nuevo como .xls o .xlsx");
  if (ReadU16(record.content.data() + 2) != contentGlobals) FailDamaged("el libro no comienza como un libro de Excel");
}

struct Tables {
  BiffRecords& records;
  BiffWorkbook& workbook;
  std::optional<std::uint64_t> firstSheet;
  std::size_t sheets = 0;
  std::vector<std::uint32_t> cellFormats;  // their number formats may be defined behind them

  void Take(const BiffRecord& record);
  void TakeSheet(const BiffRecord& record);
  void TakeNumberFormat(const BiffRecord& record);
};

void Tables::TakeSheet(const BiffRecord& record) {
  if (++sheets > limits::maximumListEntries) FailTooBig("la cantidad de hojas");
  if (!firstSheet && record.Holds(6) && record.content[5] == typeWorksheet) firstSheet = ReadU32(record.content.data());
}

void Tables::TakeNumberFormat(const BiffRecord& record) {
  if (!record.Holds(5)) return;
  const std::uint32_t formatId = ReadU16(record.content.data());
  workbook.formats.DefineFormat(formatId, BiffText(records, record, 2).ReadText());
}

void Tables::Take(const BiffRecord& record) {
  switch (record.kind) {
    case biff::filePassword:
      FailDamaged("el libro está protegido con contraseña");
    case biff::date1904:
      workbook.from1904 = record.Holds(2) && ReadU16(record.content.data()) == 1;
      break;
    case biff::boundSheet:
      TakeSheet(record);
      break;
    case biff::sharedStringTable:
      ReadSharedStrings(records, record, workbook.strings);
      break;
    case biff::numberFormat:
      TakeNumberFormat(record);
      break;
    case biff::extendedFormat:
      if (cellFormats.size() >= limits::maximumListEntries) FailTooBig("la cantidad de formatos");
      cellFormats.push_back(record.Holds(4) ? ReadU16(record.content.data() + 2) : 0U);
      break;
    default:
      break;
  }
}

}  // namespace

void ReadBiffWorkbook(BiffRecords& records, BiffWorkbook& workbook) {
  CheckBegin(records.Next());
  Tables tables{records, workbook, std::nullopt, 0, {}};
  for (BiffRecord record = records.Next(); record.kind != biff::endOfStream; record = records.Next())
    tables.Take(record);
  for (const std::uint32_t formatId : tables.cellFormats) workbook.formats.AddCellFormat(formatId);
  if (!tables.firstSheet) FailDamaged("el libro no tiene ninguna hoja de cálculo");
  workbook.sheetPosition = *tables.firstSheet;
}

}  // namespace tolvan
