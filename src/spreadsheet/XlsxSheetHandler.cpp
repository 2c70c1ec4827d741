#include "spreadsheet/XlsxSheetHandler.h"

#include <charconv>
#include <chrono>
#include <cmath>
#include <limits>

#include "base/Calendar.h"
#include "spreadsheet/WorkbookLimits.h"

namespace tolvan {
namespace {

constexpr double daysTo1970 = 25'569;
constexpr double secondsPerDay = 86'400;

bool IsBlank(char c) {
  return c == ' ' || c == '\t' || c == '\r' || c == '\n';
}

std::string_view Trimmed(std::string_view text) {
  while (!text.empty() && IsBlank(text.front())) text.remove_prefix(1);
  while (!text.empty() && IsBlank(text.back())) text.remove_suffix(1);
  return text;
}

bool ReadWhole(std::string_view text, std::uint32_t& number) {
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
  return error == std::errc() && end == text.data() + text.size();
}

double SerialOf(const DateTime& moment) {
  using namespace std::chrono;
  const sys_days day = year(moment.date.Year()) / moment.date.Month() / moment.date.Day();
  const int seconds = (moment.hour * 60 + moment.minute) * 60 + moment.second;
  return static_cast<double>(day.time_since_epoch().count()) + daysTo1970 + seconds / secondsPerDay;
}

/// "B7" is row 7, column 2; nothing for what names no cell.
bool ReadReference(std::string_view text, std::uint32_t& row, std::uint32_t& column) {
  std::size_t at = 0;
  column = 0;
  for (; at < text.size() && (text[at] & ~0x20) >= 'A' && (text[at] & ~0x20) <= 'Z'; ++at) {
    column = column * 26 + static_cast<std::uint32_t>((text[at] & ~0x20) - 'A' + 1);
    if (column > limits::maximumColumns) return false;
  }
  return column > 0 && ReadWhole(text.substr(at), row);
}

}  // namespace

void XlsxSheetHandler::StartElement(std::string_view name, const XmlAttributes& attributes) {
  if (skipped_ > 0) {
    ++skipped_;
    return;
  }
  StartChild(name, attributes);
}

void XlsxSheetHandler::StartChild(std::string_view name, const XmlAttributes& attributes) {
  switch (place_) {
    case Place::Document:
      if (name != "worksheet") FailDamaged("la primera hoja no es una hoja de cálculo");
      place_ = Place::Sheet;
      return;
    case Place::Sheet:
      if (name != "sheetData") break;
      place_ = Place::Data;
      return;
    case Place::Data:
      if (name != "row") break;
      StartRow(attributes);
      return;
    case Place::Row:
      if (name != "c") break;
      StartCell(attributes);
      return;
    case Place::Cell:
      if (name == "v") {
        place_ = Place::Value;
        hasValue_ = true;
        return;
      }
      if (name == "is") {
        place_ = Place::Inline;
        hasInline_ = true;
        inline_.Clear();
        return;
      }
      hasFormula_ = hasFormula_ || name == "f";
      break;
    case Place::Inline:
      inline_.StartElement(name);
      return;
    case Place::Value:
      break;
  }
  skipped_ = 1;
}

void XlsxSheetHandler::EndElement() {
  if (skipped_ > 0) {
    --skipped_;
    return;
  }
  switch (place_) {
    case Place::Value:
      place_ = Place::Cell;
      return;
    case Place::Inline:
      if (inline_.AtEnd()) {
        place_ = Place::Cell;
      } else {
        inline_.EndElement();
      }
      return;
    case Place::Cell:
      EndCell();
      place_ = Place::Row;
      return;
    case Place::Row:
      EndRow();
      place_ = Place::Data;
      return;
    case Place::Data:
      place_ = Place::Sheet;
      return;
    case Place::Sheet:
    case Place::Document:
      place_ = Place::Document;
      return;
  }
}

void XlsxSheetHandler::Text(std::string_view piece) {
  if (skipped_ > 0) return;
  if (place_ == Place::Inline) inline_.Text(piece);
  if (place_ != Place::Value) return;
  if (value_.size() + piece.size() > 7 * limits::maximumTextBytes) FailTooBig("el texto de una celda");
  value_.append(piece);
}

void XlsxSheetHandler::StartRow(const XmlAttributes& attributes) {
  place_ = Place::Row;
  column_ = 0;
  rowOpen_ = rowHasNumber_ = false;
  for (std::size_t i = 0; i < attributes.Count(); ++i) {
    if (std::string_view("r") != attributes.Name(i) || attributes.HasNamespace(i)) continue;
    if (!ReadWhole(attributes.Value(i), row_)) FailDamaged("una fila tiene un número que no existe");
    rowHasNumber_ = true;
  }
  if (!rowHasNumber_) ++row_;
}

void XlsxSheetHandler::OpenRow() {
  if (!rowOpen_) rows_.BeginRow(row_);
  rowOpen_ = true;
}

void XlsxSheetHandler::EndRow() {
  OpenRow();  // also a row without cells has its place in the order
  rows_.EndRow();
}

XlsxSheetHandler::Type XlsxSheetHandler::TypeNamed(std::string_view name) {
  if (name == "n") return Type::Number;
  if (name == "s") return Type::Shared;
  if (name == "str") return Type::FormulaText;
  if (name == "inlineStr") return Type::InlineText;
  if (name == "b") return Type::Boolean;
  if (name == "e") return Type::Error;
  if (name == "d") return Type::IsoDate;
  FailDamaged("una celda es de un tipo desconocido");
}

void XlsxSheetHandler::StartCell(const XmlAttributes& attributes) {
  place_ = Place::Cell;
  type_ = Type::Number;
  format_ = 0;
  hasFormula_ = hasValue_ = hasInline_ = false;
  value_.clear();
  ++column_;
  for (std::size_t i = 0; i < attributes.Count(); ++i) {
    const char* name = attributes.Name(i);
    if (name[0] == '\0' || name[1] != '\0' || attributes.HasNamespace(i)) continue;
    if (name[0] == 'r') TakeReference(attributes.Value(i));
    if (name[0] == 't') type_ = TypeNamed(attributes.Value(i));
    if (name[0] == 's' && !ReadWhole(attributes.Value(i), format_)) format_ = 0;
  }
  OpenRow();
}

void XlsxSheetHandler::TakeReference(std::string_view reference) {
  std::uint32_t row = 0;
  if (!ReadReference(reference, row, column_))
    FailDamaged("una celda de la fila " + std::to_string(row_) + " tiene una referencia incorrecta o que no existe");
  // A row without a number is where its first cell says.
  if (!rowHasNumber_ && !rowOpen_) row_ = row;
  if (row != row_) FailDamaged("una celda de la fila " + std::to_string(row_) + " dice estar en otra fila");
}

void XlsxSheetHandler::EndCell() {
  if (hasInline_ && (type_ == Type::InlineText || !hasValue_)) {
    rows_.AddText(column_, CellKind::Text, inline_.Decoded());
    return;
  }
  const bool isText = type_ == Type::FormulaText || type_ == Type::InlineText;
  if (hasFormula_ && value_.empty() && !(hasValue_ && isText)) {
    rows_.AddText(column_, CellKind::Error, notCalculatedText);
  } else if (hasValue_ && isText) {
    AddValueText(CellKind::Text);
  } else if (!Trimmed(value_).empty()) {
    EndCellWithValue();
  }
}

void XlsxSheetHandler::EndCellWithValue() {
  switch (type_) {
    case Type::Shared:
      AddShared();
      return;
    case Type::Number:
      AddNumber();
      return;
    case Type::Boolean: {
      const std::string_view value = Trimmed(value_);
      rows_.AddNumber(column_, CellKind::Boolean, value == "1" || value == "true" ? 1 : 0);
      return;
    }
    case Type::Error:
      AddValueText(CellKind::Error);
      return;
    case Type::IsoDate:
      AddIsoDate();
      return;
    case Type::FormulaText:
    case Type::InlineText:
      return;
  }
}

void XlsxSheetHandler::AddValueText(CellKind kind) {
  DecodeEscapedText(value_);
  rows_.AddText(column_, kind, value_);
}

void XlsxSheetHandler::AddShared() {
  std::uint32_t index = 0;
  if (!ReadWhole(Trimmed(value_), index)) FailValue();
  if (index >= workbook_.strings.Count())
    FailDamaged("una celda de la fila " + std::to_string(row_) + " usa un texto que no existe");
  rows_.AddShared(column_, index);
}

void XlsxSheetHandler::AddNumber() {
  std::string_view text = Trimmed(value_);
  if (text.starts_with('+')) text.remove_prefix(1);
  double number = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
  if (error == std::errc::invalid_argument || end != text.data() + text.size()) FailValue();
  if (error == std::errc::result_out_of_range) {
    // Too big and too small differ by the exponent's sign alone.
    const bool tiny = text.find("e-") != std::string_view::npos || text.find("E-") != std::string_view::npos;
    number = tiny ? 0 : std::numeric_limits<double>::infinity();
  }
  if (!std::isfinite(number)) {
    rows_.AddText(column_, CellKind::Error, notANumberText);
    return;
  }
  const bool isDate = workbook_.formats.IsDate(format_);
  if (isDate && workbook_.from1904) number += daysFrom1900To1904;
  rows_.AddNumber(column_, isDate ? CellKind::Date : CellKind::Number, number);
}

void XlsxSheetHandler::AddIsoDate() {
  std::string_view text = Trimmed(value_);
  if (text.ends_with('Z')) text.remove_suffix(1);
  const auto moment = DateTime::Parse(text);
  if (!moment) FailValue();
  rows_.AddNumber(column_, CellKind::Date, SerialOf(*moment));
}

void XlsxSheetHandler::FailValue() const {
  FailDamaged("una celda de la fila " + std::to_string(row_) + " tiene un valor que no se entiende: «" +
              value_.substr(0, 40) + "»");
}

}  // namespace tolvan
