#include "import/MovilnetRow.h"

#include <array>

#include "import/CellCleaning.h"
#include "import/MovilnetCode.h"

namespace tolvan {
namespace {

namespace column {
constexpr std::uint32_t model = 1;
constexpr std::uint32_t brand = 2;
constexpr std::uint32_t type = 3;
constexpr std::uint32_t price = 5;
constexpr std::uint32_t cost = 7;
}  // namespace column

bool IsAccepted(const SheetRow& row) {
  constexpr std::array texts{column::model, column::brand, column::type};
  for (const std::uint32_t number : texts) {
    if (HoldsNothing(row.At(number))) return false;
  }
  return row.At(column::price).kind == CellKind::Number && row.At(column::cost).kind == CellKind::Number;
}

std::string Text(const SheetCell& cell, std::string_view name, std::string& reason) {
  if (cell.kind == CellKind::Error) {
    AppendSentence(reason, std::string(name) + " es un error de la hoja (" + std::string(cell.text) + ")");
  }
  return cell.AsText();
}

}  // namespace

std::optional<MovilnetRow> ReadMovilnetRow(const SheetRow& row) {
  if (!IsAccepted(row)) return std::nullopt;
  MovilnetRow read;
  read.sheetRow = row.number;
  read.description = Text(row.At(column::model), "el modelo", read.reason);
  read.brand = Text(row.At(column::brand), "la marca", read.reason);
  const std::string type = Text(row.At(column::type), "el tipo", read.reason);
  read.code = MovilnetCode(read.description, read.brand, type);
  read.brandCode = CleanModelCode(read.brand);
  read.department = MovilnetDepartment(type);
  Remarks remarks;  // both cells are numbers, so there are none
  read.price = ReadAmount(row.At(column::price), "el precio", remarks, read.reason);
  read.cost = ReadAmount(row.At(column::cost), "el costo", remarks, read.reason);
  return read;
}

}  // namespace tolvan
