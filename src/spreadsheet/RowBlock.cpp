#include "spreadsheet/RowBlock.h"

#include <algorithm>

#include "spreadsheet/WorkbookFailure.h"
#include "spreadsheet/WorkbookLimits.h"

namespace tolvan {

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
