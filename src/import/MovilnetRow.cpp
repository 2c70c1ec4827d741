#include "import/MovilnetRow.h"

#include <array>

#include "base/Text.h"
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

struct Needed {
  std::uint32_t column;
  std::string_view name;
  bool isNumber;
};

constexpr std::array<Needed, 5> needed{{{column::model, "modelo", false},
                                        {column::brand, "marca", false},
                                        {column::type, "tipo", false},
                                        {column::price, "precio", true},
                                        {column::cost, "costo", true}}};

constexpr std::array<ColumnHeading, 10> headings{{{column::model, "MODELO"},
                                                  {column::model, "DESCRIPCION"},
                                                  {column::model, "EQUIPO"},
                                                  {column::brand, "MARCA"},
                                                  {column::type, "TIPO"},
                                                  {column::type, "TECNOLOGIA"},
                                                  {column::price, "PVP"},
                                                  {column::price, "PRECIO"},
                                                  {column::price, "PRECIO DE VENTA"},
                                                  {column::cost, "COSTO"}}};

bool ReadsAsData(const SheetRow& row) {
  return WhyMovilnetEnds(row).empty();
}

std::string Text(const SheetCell& cell, std::string_view name, std::string& reason) {
  if (cell.kind == CellKind::Error) {
    AppendSentence(reason, std::string(name) + " es un error de la hoja (" + std::string(cell.text) + ")");
  }
  return cell.AsText();
}

}  // namespace

constexpr SheetLayout movilnetLayout{.otherwise = "El libro no es una lista de precios de Movilnet",
                                     .firstRow = 4,
                                     .headings = headings,
                                     .readsAsData = ReadsAsData,
                                     .namesItsColumns = false};

std::string WhyMovilnetEnds(const SheetRow& row) {
  for (const Needed& each : needed) {
    const SheetCell& cell = row.At(each.column);
    if (HoldsNothing(cell)) return ColumnText(each.column, each.name) + " está vacía";
    if (each.isNumber && cell.kind != CellKind::Number) {
      return ColumnText(each.column, each.name) + " no es un número (" + cell.AsText() + ")";
    }
  }
  return {};
}

MovilnetRow ReadMovilnetRow(const SheetRow& row) {
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
