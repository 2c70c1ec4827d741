#include "spreadsheet/WorkbookTables.h"

#include <algorithm>

#include "spreadsheet/WorkbookLimits.h"

namespace tolvan {
namespace {

constexpr std::size_t blockBytes = std::size_t{1} << 20;
constexpr std::size_t maximumBlocks = limits::maximumSharedTextBytes / blockBytes;
static_assert(limits::maximumTextBytes <= blockBytes && maximumBlocks <= 4096, "the fields of Entry");

/// What stands between "[" and "]": elapsed hours, minutes or seconds are a date, the rest decoration.
bool IsElapsedTime(std::string_view bracket) {
  if (bracket.empty()) return false;
  const char unit = static_cast<char>(bracket[0] | 0x20);
  if (unit != 'h' && unit != 'm' && unit != 's') return false;
  return std::all_of(bracket.begin(), bracket.end(), [unit](char c) { return (c | 0x20) == unit; });
}

// Source: ECMA-376, 18.8.30, with the East Asian and Thai numbers that are dates in every language.
bool IsBuiltInDate(std::uint32_t formatId) {
  return (formatId >= 14 && formatId <= 22) || (formatId >= 27 && formatId <= 36) ||
         (formatId >= 45 && formatId <= 47) || (formatId >= 50 && formatId <= 58) || (formatId >= 71 && formatId <= 81);
}

bool IsGeneral(std::string_view section) {
  constexpr std::string_view general = "general";
  return section.size() >= general.size() &&
         std::equal(general.begin(), general.end(), section.begin(), [](char a, char b) { return a == (b | 0x20); });
}

}  // namespace

void SharedStrings::Add(std::string_view text) {
  if (text.size() > limits::maximumTextBytes) FailTooBig("el texto de una celda");
  if (entries_.size() >= limits::maximumSharedStrings) FailTooBig("la cantidad de textos");
  if (blocks_.empty() || blocks_.back().size() + text.size() > blockBytes) {
    if (blocks_.size() >= maximumBlocks) FailTooBig("el tamaño de los textos");
    blocks_.emplace_back().reserve(blockBytes);
  }
  // An empty text at the very end of a full block still needs an offset that fits its field.
  const std::size_t offset = text.empty() ? 0 : blocks_.back().size();
  blocks_.back().append(text);
  entries_.push_back({static_cast<std::uint32_t>(offset) & 0xFFFFFU,
                      static_cast<std::uint32_t>(blocks_.size() - 1) & 0xFFFU,
                      static_cast<std::uint32_t>(text.size())});
}

bool ShowsDate(std::string_view code) {
  for (std::size_t i = 0; i < code.size() && code[i] != ';'; ++i) {
    switch (code[i]) {
      case '"':
        i = std::min(code.find('"', i + 1), code.size());
        break;
      case '\\':
      case '_':
      case '*':
        ++i;  // the next character is shown, or gives a width, as it is
        break;
      case '[': {
        const std::size_t end = std::min(code.find(']', i), code.size());
        if (IsElapsedTime(code.substr(i + 1, end - i - 1))) return true;
        i = end;
        break;
      }
      case 'G':
      case 'g':
        if (IsGeneral(code.substr(i))) i += 6;
        break;
      default:
        if (std::string_view("dDmMyYhHsS").find(code[i]) != std::string_view::npos) return true;
    }
  }
  return false;
}

void CellFormats::DefineFormat(std::uint32_t formatId, std::string_view code) {
  if (defined_.size() >= limits::maximumListEntries) FailTooBig("la cantidad de formatos");
  defined_[formatId] = ShowsDate(code);
}

void CellFormats::AddCellFormat(std::uint32_t formatId) {
  if (isDate_.size() >= limits::maximumListEntries) FailTooBig("la cantidad de formatos");
  const auto found = defined_.find(formatId);
  isDate_.push_back((found != defined_.end() ? found->second : IsBuiltInDate(formatId)) ? 1 : 0);
}

void RowBlock::BeginRow(std::uint32_t number) {
  if (number == 0 || number > limits::maximumRows) FailDamaged("una fila tiene un número que no existe");
  if (number <= currentRow_)
    FailDamaged("la fila " + std::to_string(number) + " viene después de la fila " + std::to_string(currentRow_));
  currentRow_ = number;
  ascending_ = true;
}

// Everything complete has been delivered; the cells of a row that is not complete move to the front.
void RowBlock::DropTaken() {
  rows_.clear();
  nextRow_ = 0;
  if (currentFirstCell_ == 0) return;
  cells_.erase(cells_.begin(), cells_.begin() + static_cast<std::ptrdiff_t>(currentFirstCell_));
  text_.erase(0, currentFirstText_);
  for (StoredCell& cell : cells_)
    if (cell.place == Place::Here) cell.textStart -= static_cast<std::uint32_t>(currentFirstText_);
  currentFirstCell_ = currentFirstText_ = 0;
}

void RowBlock::Add(const StoredCell& cell) {
  if (cell.column == 0 || cell.column > limits::maximumColumns)
    FailDamaged("una celda tiene una columna que no existe");
  if (cells_.size() - currentFirstCell_ >= limits::maximumColumns) FailTooBig("la cantidad de celdas de una fila");
  if (cells_.size() > currentFirstCell_ && cells_.back().column >= cell.column) ascending_ = false;
  cells_.push_back(cell);
}

void RowBlock::AddNumber(std::uint32_t column, CellKind kind, double number) {
  Add({.number = number, .column = column, .kind = kind});
}

void RowBlock::AddText(std::uint32_t column, CellKind kind, std::string_view text) {
  if (text.size() > limits::maximumTextBytes) FailTooBig("el texto de una celda");
  if (text_.size() - currentFirstText_ + text.size() > limits::maximumRowTextBytes) FailTooBig("el texto de una fila");
  Add({.textStart = static_cast<std::uint32_t>(text_.size()),
       .textLength = static_cast<std::uint32_t>(text.size()),
       .column = column,
       .kind = kind,
       .place = Place::Here});
  text_.append(text);
}

void RowBlock::AddShared(std::uint32_t column, std::uint32_t index) {
  Add({.textStart = index, .column = column, .kind = CellKind::Text, .place = Place::Shared});
}

void RowBlock::EndRow() {
  if (!ascending_) SortLastRow();
  if (cells_.size() > currentFirstCell_)
    rows_.push_back(
        {currentRow_, static_cast<std::uint32_t>(currentFirstCell_), static_cast<std::uint32_t>(cells_.size())});
  currentFirstCell_ = cells_.size();
  currentFirstText_ = text_.size();
}

void RowBlock::SortLastRow() {
  const auto first = cells_.begin() + static_cast<std::ptrdiff_t>(currentFirstCell_);
  std::stable_sort(first, cells_.end(), [](const StoredCell& a, const StoredCell& b) { return a.column < b.column; });
  // The later of two equal columns stays: unique keeps the first of a run, so it walks backwards.
  const auto kept = std::unique(cells_.rbegin(), std::make_reverse_iterator(first),
                                [](const StoredCell& a, const StoredCell& b) { return a.column == b.column; });
  cells_.erase(first, kept.base());
}

bool RowBlock::Take(SheetRow& row, const SharedStrings& strings) {
  if (nextRow_ == rows_.size()) {
    DropTaken();
    return false;
  }
  const StoredRow& stored = rows_[nextRow_++];
  delivered_.clear();
  for (std::uint32_t i = stored.firstCell; i < stored.endCell; ++i) {
    const StoredCell& cell = cells_[i];
    SheetCell& out = delivered_.emplace_back();
    out.column = cell.column;
    out.kind = cell.kind;
    out.number = cell.number;
    if (cell.place == Place::Here) out.text = std::string_view(text_).substr(cell.textStart, cell.textLength);
    if (cell.place == Place::Shared) out.text = strings.At(cell.textStart);
  }
  row.number = stored.number;
  row.cells = delivered_;
  return true;
}

}  // namespace tolvan
