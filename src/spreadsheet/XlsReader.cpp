// Reads the first worksheet of an .xls record by record.
#include <algorithm>
#include <array>
#include <bit>
#include <cmath>
#include <cstdint>
#include <memory>
#include <optional>
#include <vector>

#include "host/SpreadsheetApplication.h"
#include "spreadsheet/Biff.h"
#include "spreadsheet/WorkbookFile.h"
#include "spreadsheet/WorkbookLimits.h"

namespace tolvan {
namespace {

constexpr std::uint16_t contentWorksheet = 0x0010;
constexpr std::uint16_t notANumberMark = 0xFFFF;
constexpr std::size_t cellHeadBytes = 6;  // row, column, cell format

CompoundStream OpenWorkbookStream(const WorkbookFile& file) {
  const CompoundFile container(file);
  if (auto stream = container.Open("Workbook")) return *stream;
  if (container.Has("EncryptedPackage")) FailDamaged("el libro está protegido con contraseña");
  if (container.Has("Book"))
    FailDamaged("el libro es de una versión de Excel anterior a la 97; guárdelo de nuevo como .xls o .xlsx");
  if (container.Has("WordDocument")) FailDamaged("es un documento de Word, no un libro de Excel");
  FailDamaged("el archivo no contiene un libro de Excel");
}

/// By kind, for the inner loop: whether the record is a cell with a value, or begins or ends a stream.
enum class Meaning : std::uint8_t { None, Cell, UnknownCell, Begin, End };

/// The numbers of cells with a value, without the version in their upper byte: integer, number, text, boolean or error,
/// formula, RK, several RK, rich text, shared text.
constexpr std::array<unsigned, 9> cellNumbers{0x02, 0x03, 0x04, 0x05, 0x06, 0x7E, 0xBD, 0xD6, 0xFD};

// A number of this series under another version is a cell whose layout could only be guessed in BIFF8: the workbook is
// refused rather than read without it.
constexpr std::array<Meaning, 0x0900> MakeMeanings() {
  std::array<Meaning, 0x0900> meanings{};
  for (const unsigned version : {0x0000U, 0x0200U, 0x0400U})
    for (const unsigned cell : cellNumbers) meanings[version | cell] = Meaning::UnknownCell;
  for (const std::uint16_t kind : {biff::formula, biff::multipleRk, biff::richText, biff::sharedText, biff::number,
                                   biff::text, biff::booleanOrError, biff::formula3, biff::rk, biff::formula4})
    meanings[kind] = Meaning::Cell;
  meanings[biff::beginOfStream] = Meaning::Begin;
  meanings[biff::endOfStream] = Meaning::End;
  return meanings;
}

constexpr std::array<Meaning, 0x0900> meanings = MakeMeanings();

Meaning MeaningOf(std::uint16_t kind) {
  return kind < meanings.size() ? meanings[kind] : Meaning::None;
}

double DecodeRk(std::uint32_t rk) {
  const double value =
      (rk & 2) != 0 ? std::bit_cast<std::int32_t>(rk) >> 2 : std::bit_cast<double>(std::uint64_t{rk & ~3U} << 32);
  return (rk & 1) != 0 ? value / 100 : value;
}

std::string_view ErrorNamed(unsigned code) {
  switch (code) {
    case 0x00:
      return "#NULL!";
    case 0x07:
      return "#DIV/0!";
    case 0x0F:
      return "#VALUE!";
    case 0x17:
      return "#REF!";
    case 0x1D:
      return "#NAME?";
    case 0x24:
      return "#NUM!";
    case 0x2A:
      return "#N/A";
    case 0x2B:
      return "#GETTING_DATA";
    default:
      return "#ERROR";
  }
}

std::uint32_t RowOf(const BiffRecord& record) {
  if (!record.Holds(cellHeadBytes)) FailDamaged("una celda del libro está truncada");
  return ReadU16(record.content.data()) + 1U;
}

[[noreturn]] void FailUnknownCell(const BiffRecord& record) {
  constexpr std::string_view digits = "0123456789ABCDEF";
  std::string number = "0x";
  for (int shift = 12; shift >= 0; shift -= 4) number += digits[record.kind >> shift & 0xF];
  FailDamaged("una celda de la fila " + std::to_string(RowOf(record)) + " tiene un registro desconocido (" + number +
              "); guarde el libro de nuevo como .xlsx");
}

void Require(const BiffRecord& record, std::size_t bytes) {
  if (!record.Holds(bytes)) FailDamaged("una celda de la fila " + std::to_string(RowOf(record)) + " está truncada");
}

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
  std::uint64_t firstRecord_ = 0;  // after the beginning of the sheet
  unsigned depth_ = 1;             // of streams inside the sheet's own
  std::vector<CellPlace> sorted_;  // only when the rows are not in order
  std::size_t nextSorted_ = 0;
  std::optional<std::uint32_t> openRow_;
  bool ended_ = false;
};

XlsReader::XlsReader(std::unique_ptr<WorkbookFile> file, const Interruption& interruption)
    : file_(std::move(file)), records_(OpenWorkbookStream(*file_), interruption) {
  ReadBiffWorkbook(records_, workbook_);
  BeginSheet();
  if (!RowsAscend()) SortCells();
  records_.Seek(firstRecord_);
  depth_ = 1;
}

void XlsReader::BeginSheet() {
  records_.Seek(workbook_.sheetPosition);
  const BiffRecord record = records_.Next();
  if (record.kind != biff::beginOfStream || !record.Holds(4) || ReadU16(record.content.data() + 2) != contentWorksheet)
    FailDamaged("la primera hoja del libro no se encuentra donde debe");
  firstRecord_ = record.position + 4 + record.content.size();
}

/// The next cell record of the sheet in the order of the stream; nothing after the last. Charts inside the sheet are
/// streams of their own, with cells that are not the sheet's.
std::optional<BiffRecord> XlsReader::NextCellInStream() {
  while (depth_ > 0) {
    const BiffRecord record = records_.Next();
    const Meaning meaning = MeaningOf(record.kind);
    if (meaning == Meaning::Cell && depth_ == 1) return record;
    if (meaning == Meaning::UnknownCell && depth_ == 1) FailUnknownCell(record);
    if (meaning == Meaning::Begin) ++depth_;
    if (meaning == Meaning::End) --depth_;
  }
  return std::nullopt;
}

// Some writers store cells in the order in which they were set. Rows are delivered in ascending order, so a first look
// at the places of the cells decides whether they have to be sorted.
bool XlsReader::RowsAscend() {
  std::uint32_t last = 0;
  while (const auto record = NextCellInStream()) {
    const std::uint32_t row = RowOf(*record);
    if (row < last) return false;
    last = row;
  }
  return true;
}

void XlsReader::SortCells() {
  records_.Seek(firstRecord_);
  depth_ = 1;
  while (const auto record = NextCellInStream()) {
    if (sorted_.size() >= limits::maximumUnorderedRecords) FailTooBig("la cantidad de celdas en desorden");
    sorted_.push_back({RowOf(*record), record->position});
  }
  std::stable_sort(sorted_.begin(), sorted_.end(),
                   [](const CellPlace& left, const CellPlace& right) { return left.row < right.row; });
}

std::optional<BiffRecord> XlsReader::NextCell() {
  if (sorted_.empty()) return NextCellInStream();
  if (nextSorted_ == sorted_.size()) return std::nullopt;
  records_.Jump(sorted_[nextSorted_++].position);
  return records_.Next();
}

bool XlsReader::NextRow(SheetRow& row) {
  while (!rows_.Take(row, workbook_.strings)) {
    if (ended_) return false;
    const auto record = NextCell();
    ended_ = !record;
    if (ended_ || openRow_ != RowOf(*record)) {
      if (openRow_) rows_.EndRow();
      if (ended_) continue;
      openRow_ = RowOf(*record);
      rows_.BeginRow(*openRow_);
    }
    TakeCell(*record);
  }
  return true;
}

void XlsReader::TakeCell(const BiffRecord& record) {
  const unsigned char* content = record.content.data();
  const std::uint32_t column = ReadU16(content + 2) + 1U;
  const std::uint16_t cellFormat = ReadU16(content + 4);
  if (column > limits::maximumXlsColumns) FailDamaged("una celda tiene una columna que no existe");
  switch (record.kind) {
    case biff::sharedText:
      AddShared(record, column);
      break;
    case biff::rk:
      Require(record, 10);
      AddNumber(column, cellFormat, DecodeRk(ReadU32(content + 6)));
      break;
    case biff::multipleRk:
      TakeMultipleRk(record, column);
      break;
    case biff::number:
      Require(record, 14);
      AddNumber(column, cellFormat, ReadDouble(content + 6));
      break;
    case biff::booleanOrError:
      Require(record, 8);
      AddBooleanOrError(column, content[6], content[7] != 0);
      break;
    case biff::formula:
    case biff::formula3:
    case biff::formula4:
      TakeFormula(record, column);
      break;
    default:
      rows_.AddText(column, CellKind::Text, BiffText(records_, record, cellHeadBytes).ReadText());
  }
}

void XlsReader::AddShared(const BiffRecord& record, std::uint32_t column) {
  Require(record, 10);
  const std::uint32_t index = ReadU32(record.content.data() + 6);
  if (index >= workbook_.strings.Count())
    FailDamaged("una celda de la fila " + std::to_string(RowOf(record)) + " usa un texto que no existe");
  rows_.AddShared(column, index);
}

void XlsReader::TakeMultipleRk(const BiffRecord& record, std::uint32_t column) {
  // Row and first column, then format and number of each cell, then the last column.
  for (std::size_t at = 4; record.Holds(at + 6 + 2); at += 6, ++column) {
    if (column > limits::maximumXlsColumns) FailDamaged("una celda tiene una columna que no existe");
    const unsigned char* cell = record.content.data() + at;
    AddNumber(column, ReadU16(cell), DecodeRk(ReadU32(cell + 2)));
  }
}

void XlsReader::AddNumber(std::uint32_t column, std::uint16_t cellFormat, double number) {
  if (!std::isfinite(number)) {
    rows_.AddText(column, CellKind::Error, notANumberText);
    return;
  }
  const bool isDate = workbook_.formats.IsDate(cellFormat);
  if (isDate && workbook_.from1904) number += daysFrom1900To1904;
  rows_.AddNumber(column, isDate ? CellKind::Date : CellKind::Number, number);
}

void XlsReader::AddBooleanOrError(std::uint32_t column, unsigned value, bool isError) {
  if (isError) {
    rows_.AddText(column, CellKind::Error, ErrorNamed(value));
  } else {
    rows_.AddNumber(column, CellKind::Boolean, value != 0 ? 1 : 0);
  }
}

// Place, format and result lie alike under each of a formula's three numbers.
void XlsReader::TakeFormula(const BiffRecord& record, std::uint32_t column) {
  Require(record, 14);
  const unsigned char* content = record.content.data();
  if (ReadU16(content + 12) != notANumberMark) {
    AddNumber(column, ReadU16(content + 4), ReadDouble(content + 6));
    return;
  }
  switch (content[6]) {
    case 0:
      TakeFormulaText(column);
      break;
    case 1:
    case 2:
      AddBooleanOrError(column, content[8], content[6] == 2);
      break;
    default:
      rows_.AddText(column, CellKind::Text, "");
  }
}

// The text stands in a record of its own, after those that belong to the formula itself.
void XlsReader::TakeFormulaText(std::uint32_t column) {
  for (;;) {
    switch (records_.PeekKind()) {
      case biff::sharedFormula:
      case biff::arrayFormula:
      case biff::dataTable:
      case biff::continued:
        records_.Next();
        continue;
      case biff::formulaText:
        rows_.AddText(column, CellKind::Text, BiffText(records_, records_.Next(), 0).ReadText());
        return;
      default:
        rows_.AddText(column, CellKind::Error, notCalculatedText);
        return;
    }
  }
}

}  // namespace

std::unique_ptr<WorksheetReader> ReadXls(std::unique_ptr<WorkbookFile> file, const Interruption& interruption) {
  return std::make_unique<XlsReader>(std::move(file), interruption);
}

}  // namespace tolvan
