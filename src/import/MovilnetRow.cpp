#include "import/MovilnetRow.h"

#include <array>
#include <charconv>
#include <utility>

#include "base/Text.h"

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

/// Why the row is not accepted, which ends the data, Spanish: one of the columns A, B, C, E and G is empty, or E or G
/// is not a number. Empty when it is accepted.
std::string WhyEnds(const SheetRow& row) {
  for (const Needed& each : needed) {
    const SheetCell& cell = row.At(each.column);
    if (HoldsNothing(cell)) return ColumnText(each.column, each.name) + " está vacía";
    if (each.isNumber && cell.kind != CellKind::Number) {
      return ColumnText(each.column, each.name) + " no es un número (" + cell.AsText() + ")";
    }
  }
  return {};
}

bool ReadsAsData(const SheetRow& row) {
  return WhyEnds(row).empty();
}

std::string Text(const SheetCell& cell, std::string_view name, std::string& reason) {
  RefuseError(cell, name, reason);
  return cell.AsText();
}

constexpr std::size_t prefixLength = 2;

// In this order.
constexpr std::array<std::pair<std::string_view, std::string_view>, 5> shortForms{
    {{"Refurbished", "RF"}, {"EVDO", ""}, {"VERGATARIO", "VERG"}, {"ORINOQUIA", "ORI"}, {"AUYANTEPUI", "AYT"}}};

/// How many characters the longest beginning of the brand has that occurs in the model, from 2 to `most`; 0 when none
/// does. Where a beginning occurs, every shorter one does too.
std::size_t LongestBeginning(std::string_view model, std::string_view brand, std::size_t most) {
  std::size_t found = 0;
  std::size_t least = prefixLength;
  while (least <= most) {
    const std::size_t middle = least + (most - least) / 2;
    if (ContainsIgnoringCase(model, FirstCharacters(brand, middle))) {
      found = middle;
      least = middle + 1;
    } else {
      most = middle - 1;
    }
  }
  return found;
}

/// Removes the brand and its beginnings, the longest first, down to two characters.
std::string WithoutBrand(std::string model, std::string_view brand) {
  std::size_t count = LongestBeginning(model, brand, CountCharacters(brand));
  while (count > 0) {
    model = ReplaceAllIgnoringCase(model, FirstCharacters(brand, count), "");
    count = LongestBeginning(model, brand, count - 1);
  }
  return model;
}

/// Each character beyond the code page as "u", its code point in hexadecimal and ";". An upper-cased text holds no
/// small "u" of its own, so that no two texts give the same bytes.
std::string EscapedBytes(std::string_view upper) {
  std::string bytes;
  for (std::size_t position = 0; position < upper.size();) {
    const std::size_t begin = position;
    const auto codePoint = static_cast<std::uint32_t>(NextCodePoint(upper, position));
    if (const std::optional<std::string> byte = ToWindows1252(upper.substr(begin, position - begin))) {
      bytes += *byte;
      continue;
    }
    std::array<char, 8> digits{};
    const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), codePoint, 16).ptr;
    bytes.append("u").append(digits.data(), end).append(";");
  }
  return bytes;
}

}  // namespace

constexpr SheetLayout movilnetLayout{.otherwise = "El libro no es una lista de precios de Movilnet",
                                     .firstRow = 4,
                                     .headings = headings,
                                     .whyEnds = WhyEnds,
                                     .readsAsData = ReadsAsData,
                                     .namesItsColumns = false};

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

std::string MovilnetCode(std::string_view model, std::string_view brand, std::string_view type) {
  std::string name(TrimBlanks(model));
  for (const auto& [word, shortForm] : shortForms) name = ReplaceAllIgnoringCase(name, word, shortForm);
  name = ReplaceAll(WithoutBrand(std::move(name), brand), " ", "");
  const std::string kind = ContainsIgnoringCase(type, "modem") ? "M" : "T";
  const std::string prefix = ToUpper(FirstCharacters(ReplaceAll(brand, " ", ""), prefixLength));
  return CleanModelCode(kind + prefix + name);
}

std::string MovilnetDepartment(std::string_view type) {
  std::string department;
  if (ContainsIgnoringCase(type, "CDMA")) department = "CDMA";
  if (ContainsIgnoringCase(type, "GSM")) department = "GSM";
  if (ContainsIgnoringCase(type, "UMTS")) department = "GSM";
  return department;
}

std::string OriginFingerprint(const HashService& hashes, std::string_view brand, std::string_view description) {
  const std::string joined = std::string(brand) + std::string(description);
  const std::string upper = ToUpper(joined);
  if (const std::optional<std::string> bytes = ToWindows1252(upper)) return hashes.Md5(*bytes);
  // "ƒ" and "µ" lie in the code page, but not their capitals: stores hold the fingerprints of such lines with "?".
  if (ToWindows1252(joined)) return hashes.Md5(ToWindows1252(upper, '?'));
  return hashes.Md5(EscapedBytes(upper));
}

}  // namespace tolvan
