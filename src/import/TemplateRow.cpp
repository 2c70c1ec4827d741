#include "import/TemplateRow.h"

#include <array>
#include <cmath>
#include <limits>
#include <string_view>

#include "base/Text.h"
#include "import/CellValues.h"

namespace tolvan {
namespace {

namespace column {
constexpr std::uint32_t code = 1;
constexpr std::uint32_t description = 2;
constexpr std::uint32_t brand = 3;
constexpr std::uint32_t department = 4;
constexpr std::uint32_t cost = 5;
constexpr std::uint32_t price = 6;
constexpr std::uint32_t unitCode = 8;
constexpr std::uint32_t multiplier = 9;
constexpr std::uint32_t alternatePrice = 10;
constexpr std::uint32_t alternateCost = 11;
constexpr std::uint32_t foreignCost = 13;
}  // namespace column

struct TextColumn {
  std::uint32_t number;
  std::string_view name;
};

constexpr std::array<TextColumn, 5> textColumns{{{column::code, "el código"},
                                                 {column::description, "la descripción"},
                                                 {column::brand, "la marca"},
                                                 {column::department, "el departamento"},
                                                 {column::unitCode, "la unidad"}}};

/// An error such as #N/A hides a text that nobody knows; a default in its place would be a guess.
void RefuseErrors(const SheetRow& row, std::string& reason) {
  for (const TextColumn& text : textColumns) RefuseError(row.At(text.number), text.name, reason);
}

std::string Code(const SheetCell& cell, std::size_t length) {
  if (cell.kind == CellKind::Error) return {};
  std::string scratch;
  return CleanCode(cell.AsText(scratch), length);
}

std::string Description(const SheetCell& cell, const std::string& code) {
  if (cell.kind == CellKind::Error) return code;
  std::string scratch;
  std::string description = CleanDescription(cell.AsText(scratch), descriptionLength);
  return description.empty() ? code : description;
}

/// A whole number, a tie going to the even one; 0 when the cell is not numeric.
std::int32_t Multiplier(const SheetCell& cell, Remarks& remarks, std::string& reason) {
  if (HoldsNothing(cell)) return 0;
  if (cell.kind != CellKind::Number) {
    remarks.push_back(NotANumber(cell, "el multiplicador"));
    return 0;
  }
  const double whole = std::nearbyint(cell.number);
  constexpr std::int32_t largest = std::numeric_limits<std::int32_t>::max();
  if (std::fabs(whole) > static_cast<double>(largest)) {
    AppendSentence(reason, "el multiplicador de la unidad es demasiado grande");
    return 0;
  }
  const auto multiplier = static_cast<std::int32_t>(whole);
  if (whole != cell.number) {
    remarks.push_back("el multiplicador " + cell.AsText() + " se redondea a " + std::to_string(multiplier));
  }
  return multiplier;
}

// Those of the template that comes with the product, and what other editions of it call the same.
constexpr std::array<ColumnHeading, 20> headings{{{column::code, "CODIGO"},
                                                  {column::code, "IDITEM"},
                                                  {column::description, "DESCRIPCION"},
                                                  {column::brand, "MARCA"},
                                                  {column::brand, "IDMARCA"},
                                                  {column::department, "DEPARTAMENTO"},
                                                  {column::department, "IDDEPARTAMENTO"},
                                                  {column::cost, "COSTO"},
                                                  {column::cost, "COSTOACTUAL"},
                                                  {column::price, "PRECIO DE VENTA"},
                                                  {column::price, "PRECIO"},
                                                  {column::price, "PVP"},
                                                  {column::unitCode, "UNIDAD ALTERNA"},
                                                  {column::unitCode, "UNIDAD"},
                                                  {column::multiplier, "MULTIPLICADOR"},
                                                  {column::alternatePrice, "PRECIO UNIDAD ALTERNA"},
                                                  {column::alternatePrice, "PRECIO"},
                                                  {column::alternateCost, "COSTO UNIDAD ALTERNA"},
                                                  {column::alternateCost, "COSTO"},
                                                  {column::foreignCost, "COSTO EN MONEDA EXTRANJERA"}}};

/// Why the row ends the data, Spanish: its first column is empty or an empty text. Empty when it does not; blanks alone
/// do not end it.
std::string WhyEnds(const SheetRow& row) {
  if (!HoldsNothing(row.At(column::code))) return {};
  return ColumnText(column::code, "código") + " está vacía";
}

bool ReadsAsData(const SheetRow& row) {
  const bool hasAmount =
      row.At(column::cost).kind == CellKind::Number || row.At(column::price).kind == CellKind::Number;
  return hasAmount && WhyEnds(row).empty();
}

}  // namespace

constexpr SheetLayout templateLayout{.otherwise = "El libro no está hecho con la plantilla",
                                     .firstRow = 5,
                                     .headings = headings,
                                     .whyEnds = WhyEnds,
                                     .readsAsData = ReadsAsData,
                                     .namesItsColumns = true};

TemplateRow ReadTemplateRow(const SheetRow& row) {
  TemplateRow read;
  read.sheetRow = row.number;
  RefuseErrors(row, read.reason);
  read.code = Code(row.At(column::code), itemCodeLength);
  if (read.code.empty() && read.reason.empty()) read.reason = "el código queda vacío al quitarle los espacios";
  read.description = Description(row.At(column::description), read.code);
  read.brand = CodeOrDefault(Code(row.At(column::brand), shortCodeLength));
  read.department = CodeOrDefault(Code(row.At(column::department), shortCodeLength));
  const auto amount = [&](std::uint32_t number, std::string_view name) {
    return ReadAmount(row.At(number), name, read.remarks, read.reason);
  };
  read.cost = amount(column::cost, "el costo");
  read.price = amount(column::price, "el PVP");
  read.unitCode = Code(row.At(column::unitCode), shortCodeLength);
  read.multiplier = Multiplier(row.At(column::multiplier), read.remarks, read.reason);
  read.alternatePrice = amount(column::alternatePrice, "el PVP de la unidad alterna");
  read.alternateCost = amount(column::alternateCost, "el costo de la unidad alterna");
  read.foreignCost = amount(column::foreignCost, "el costo en moneda extranjera");
  return read;
}

}  // namespace tolvan
