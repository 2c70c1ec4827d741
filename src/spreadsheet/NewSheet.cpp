#include "spreadsheet/NewXlsxWorkbook.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>

#include "base/Text.h"
#include "spreadsheet/WorkbookLimits.h"
#include "spreadsheet/XlsxParts.h"

namespace tolvan {
namespace {

constexpr double widestColumn = 60;
constexpr double narrowestColumn = 9;
constexpr double cellPadding = 0.7109375;  // characters: five pixels, as the programs store it
constexpr std::size_t pieceSize = std::size_t{1} << 20;

constexpr std::string_view spreadsheetNamespace = "http://schemas.openxmlformats.org/spreadsheetml/2006/main";

std::string ShortestText(double value) {
  std::array<char, 32> buffer{};
  const auto result = std::to_chars(buffer.data(), buffer.data() + buffer.size(), value);
  return {buffer.data(), result.ptr};
}

/// "A", "Z", "AA"; `column` from 0.
std::string ColumnName(std::size_t column) {
  std::string name(1, static_cast<char>('A' + column % 26));
  return column < 26 ? name : ColumnName(column / 26 - 1) + name;
}

std::string Attribute(std::string_view name, std::string_view value) {
  return ' ' + std::string(name) + "=\"" + std::string(value) + '"';
}

bool IsHeldByXml(char32_t codePoint) {
  if (codePoint == 0xFFFE || codePoint == 0xFFFF) return false;
  // A carriage return would come back as a line feed.
  return codePoint >= 0x20 || codePoint == '\t' || codePoint == '\n';
}

std::string EscapeOf(char32_t codePoint) {
  constexpr std::string_view digits = "0123456789ABCDEF";
  std::string escape = "_x";
  for (int shift = 12; shift >= 0; shift -= 4) escape += digits[(codePoint >> shift) & 0xFU];
  return escape + '_';
}

/// The content of an element. A byte that is no UTF-8 becomes U+FFFD; NUL, which no column of the store holds, is left
/// out.
std::string XmlText(std::string_view text) {
  std::string xml;
  xml.reserve(text.size() + 8);
  for (std::size_t at = 0; at < text.size();) {
    const char32_t codePoint = NextCodePoint(text, at);
    if (codePoint == 0) continue;
    if (codePoint == '<') {
      xml += "&lt;";
    } else if (codePoint == '>') {
      xml += "&gt;";
    } else if (codePoint == '&') {
      xml += "&amp;";
    } else if (IsHeldByXml(codePoint)) {
      AppendCodePoint(xml, codePoint);
    } else {
      xml += EscapeOf(codePoint);
    }
  }
  return xml;
}

void AppendPiece(std::vector<std::string>& pieces, const std::string& xml) {
  if (pieces.empty() || pieces.back().size() + xml.size() > pieceSize) pieces.emplace_back().reserve(pieceSize);
  pieces.back() += xml;
}

std::string ColumnsXml(const std::vector<double>& widths) {
  if (widths.empty()) return {};
  std::string xml = "<cols>";
  for (std::size_t index = 0; index < widths.size(); ++index) {
    const std::string number = std::to_string(index + 1);
    xml += "<col" + Attribute("min", number) + Attribute("max", number) +
           Attribute("width", ShortestText(widths[index] + cellPadding)) + " customWidth=\"1\"/>";
  }
  return xml + "</cols>";
}

std::string FrozenXml(std::uint32_t rows) {
  if (rows == 0) return {};
  return "<pane" + Attribute("ySplit", std::to_string(rows)) +
         Attribute("topLeftCell", "A" + std::to_string(rows + 1)) + " activePane=\"bottomLeft\" state=\"frozen\"/>";
}

std::vector<std::string_view> Between(std::string_view head, const std::vector<std::string>& pieces,
                                      std::string_view tail) {
  std::vector<std::string_view> whole{head};
  whole.insert(whole.end(), pieces.begin(), pieces.end());
  whole.push_back(tail);
  return whole;
}

}  // namespace

void NewSheet::AppendRow(std::uint32_t number, std::span<const NewCell> cells, RowFormat format) {
  if (number > limits::maximumRows) throw HostError(HostErrorKind::InvalidValue, "la hoja no admite más filas");
  if (cells.size() > limits::maximumColumns)
    throw HostError(HostErrorKind::InvalidValue, "la hoja no admite más columnas");
  std::string xml = "<row" + Attribute("r", std::to_string(number));
  if (format.height > 0) xml += Attribute("ht", ShortestText(format.height)) + " customHeight=\"1\"";
  xml += '>';
  for (std::size_t column = 0; column < cells.size(); ++column) xml += CellXml(number, column, cells[column], format);
  AppendPiece(rows_, xml + "</row>");
  lastRow_ = number;
  columns_ = std::max(columns_, cells.size());
}

std::string NewSheet::CellXml(std::uint32_t row, std::size_t column, const NewCell& cell, RowFormat format) {
  const auto begin = [&](NewCellStyle style) {
    return "<c" + Attribute("r", ColumnName(column) + std::to_string(row)) +
           Attribute("s", std::to_string(static_cast<int>(style)));
  };
  if (const auto* text = std::get_if<std::string_view>(&cell)) {
    if (text->empty()) return {};
    const std::string number = std::to_string(NumberOfText(*text));
    return begin(format.text) + " t=\"s\"><v>" + number + "</v></c>";
  }
  if (const auto* number = std::get_if<double>(&cell)) {
    if (!std::isfinite(*number)) throw HostError(HostErrorKind::InvalidValue, "el número no se puede escribir");
    return begin(format.number) + "><v>" + ShortestText(*number) + "</v></c>";
  }
  return {};
}

std::size_t NewSheet::NumberOfText(std::string_view text) {
  if (!FitsCell(text))
    throw HostError(HostErrorKind::InvalidValue, "el texto es más largo que lo que admite una celda");
  ++textCells_;
  const auto [place, isNew] = numbers_.try_emplace(std::string(text), numbers_.size());
  if (isNew) AppendPiece(texts_, "<si><t xml:space=\"preserve\">" + XmlText(GuardEscapes(text)) + "</t></si>");
  return place->second;
}

void NewSheet::Widen(std::size_t column, std::size_t characters) {
  if (column >= widths_.size()) widths_.resize(column + 1, narrowestColumn);
  widths_[column] = std::max(widths_[column], std::min(widestColumn, static_cast<double>(characters) + 2));
}

std::vector<std::string_view> NewSheet::WorksheetPart(std::uint32_t frozenRows) {
  const std::string last = ColumnName(std::max<std::size_t>(columns_, 1) - 1) + std::to_string(std::max(lastRow_, 1U));
  worksheetHead_ = "<?xml version=\"1.0\" encoding=\"UTF-8\" standalone=\"yes\"?>\n<worksheet" +
                   Attribute("xmlns", spreadsheetNamespace) +
                   "><sheetPr><pageSetUpPr fitToPage=\"1\"/></sheetPr><dimension" + Attribute("ref", "A1:" + last) +
                   "/><sheetViews><sheetView tabSelected=\"1\" workbookViewId=\"0\">" + FrozenXml(frozenRows) +
                   "</sheetView></sheetViews><sheetFormatPr defaultRowHeight=\"15\"/>" + ColumnsXml(widths_) +
                   "<sheetData>";
  return Between(worksheetHead_, rows_,
                 "</sheetData><pageMargins left=\"0.7\" right=\"0.7\" top=\"0.75\" bottom=\"0.75\" header=\"0.3\" "
                 "footer=\"0.3\"/><pageSetup orientation=\"landscape\" fitToHeight=\"0\"/></worksheet>");
}

std::vector<std::string_view> NewSheet::TextsPart() {
  textsHead_ = "<?xml version=\"1.0\" encoding=\"UTF-8\" standalone=\"yes\"?>\n<sst" +
               Attribute("xmlns", spreadsheetNamespace) + Attribute("count", std::to_string(textCells_)) +
               Attribute("uniqueCount", std::to_string(numbers_.size())) + '>';
  return Between(textsHead_, texts_, "</sst>");
}

}  // namespace tolvan
