#include "import/ImportReport.h"

#include <algorithm>
#include <array>

#include <functional>
#include <vector>

#include "base/Text.h"
#include "import/CellValues.h"

namespace tolvan {
namespace {

constexpr std::string_view apostrophe = "'";

// Also in full width, as East Asian keyboards write them.
constexpr std::array<std::string_view, 8> formulaSigns{"=", "+", "-", "@", "＝", "＋", "－", "＠"};
constexpr std::array<std::string_view, 2> blanks{" ", "\u00A0"};
// Between two cells where a spreadsheet takes another separator than the comma, and between two lines.
constexpr std::string_view separators = ";\t\r\n";

std::string_view WithoutBlanks(std::string_view text) {
  for (const std::string_view blank : blanks) {
    if (text.starts_with(blank)) return WithoutBlanks(text.substr(blank.size()));
  }
  return text;
}

bool BeginsFormula(std::string_view text) {
  const std::string_view shown = WithoutBlanks(text);
  return std::any_of(formulaSigns.begin(), formulaSigns.end(),
                     [&](std::string_view sign) { return shown.starts_with(sign); });
}

std::string Harmless(std::string_view text) {
  std::string harmless;
  if (!text.empty() && separators.substr(1).find(text.front()) != std::string_view::npos) harmless += apostrophe;
  bool cellBegins = true;
  for (std::size_t place = 0; place < text.size(); ++place) {
    if (cellBegins && BeginsFormula(text.substr(place))) harmless += apostrophe;
    harmless += text[place];
    cellBegins = separators.find(text[place]) != std::string_view::npos;
  }
  return harmless;
}

constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";
constexpr std::size_t writeSize = 1U << 16;

/// A text, a row's number, an amount, or nothing.
using ReportCell = std::variant<std::monostate, std::string, std::int64_t, Currency>;
using ReportLine = std::vector<ReportCell>;
using LineTaker = std::function<void(const ReportLine& line, bool heading)>;

ReportCell AmountOrNothing(const std::optional<Currency>& amount) {
  if (!amount) return {};
  return *amount;
}

ReportLine Headings() {
  return {"Acción",      "Fila",         "Código",    "Descripción", "Costo anterior",
          "Costo nuevo", "PVP anterior", "PVP nuevo", "Observación"};
}

ReportLine LineOf(const ReviewRow& row) {
  const bool applied = row.action != RowAction::None;
  // An item without a given cost begins with 0; an item's value that the workbook does not give stays as it was.
  const std::optional<Currency> cost = row.action == RowAction::Create ? row.cost.value_or(Currency()) : row.cost;
  const auto after = [&](const std::optional<Currency>& given, const std::optional<Currency>& before) {
    return applied ? AmountOrNothing(given ? given : before) : ReportCell();
  };
  return {std::string(ActionText(row.action)),
          std::int64_t{row.sheetRow},
          row.associated.empty() ? row.code : row.associated,
          row.description,
          AmountOrNothing(row.previousCost),
          after(cost, row.previousCost),
          AmountOrNothing(row.previousPrice),
          after(row.price, row.previousPrice),
          row.AllRemarks()};
}

void ForEachLine(const PriceImporter& importer, const LineTaker& take) {
  take(Headings(), true);
  for (const bool applied : {true, false}) {
    for (std::int32_t number = 1; number <= importer.NumeroRenglones(); ++number) {
      const ReviewRow row = importer.RowAt(number);
      if ((row.action != RowAction::None) == applied) take(LineOf(row), false);
    }
  }
}

std::string CsvField(const ReportCell& cell) {
  if (const auto* amount = std::get_if<Currency>(&cell)) return amount->ToText();
  if (const auto* number = std::get_if<std::int64_t>(&cell)) return std::to_string(*number);
  const auto* text = std::get_if<std::string>(&cell);
  return text == nullptr ? std::string() : CsvText(*text);
}

void WriteCsv(const PriceImporter& importer, FileHelper& files, std::string_view path) {
  const auto file = files.CreateWhole(path);
  std::string pending(byteOrderMark);
  ForEachLine(importer, [&](const ReportLine& line, bool) {
    for (std::size_t index = 0; index < line.size(); ++index) {
      if (index > 0) pending += ',';
      pending += CsvField(line[index]);
    }
    pending += "\r\n";
    if (pending.size() < writeSize) return;
    file->Write(pending);
    pending.clear();
  });
  file->Write(pending);
  file->Commit();
}

void WriteWorkbook(const PriceImporter& importer, SpreadsheetApplication& spreadsheets, std::string_view path) {
  spreadsheets.Start();
  const auto workbook = spreadsheets.CreateFromTemplate({}, 0);
  std::vector<NewCell> cells;
  ForEachLine(importer, [&](const ReportLine& line, bool heading) {
    cells.clear();
    for (const ReportCell& cell : line) {
      NewCell& written = cells.emplace_back();
      if (const auto* text = std::get_if<std::string>(&cell)) written = std::string_view(*text);
      if (const auto* number = std::get_if<std::int64_t>(&cell)) written = static_cast<double>(*number);
      if (const auto* amount = std::get_if<Currency>(&cell)) written = AmountInCell(*amount).ToDouble();
    }
    workbook->AppendRow(cells, heading ? NewRowStyle::Heading : NewRowStyle::Data);
  });
  workbook->SaveAs(path);
}

bool EndsWith(std::string_view path, std::string_view ending) {
  return path.size() > ending.size() && EqualIgnoringCase(path.substr(path.size() - ending.size()), ending);
}

}  // namespace

std::string CsvText(std::string_view text) {
  std::string field = Harmless(text);
  if (field.find_first_of(",\"\r\n") == std::string::npos) return field;
  return '"' + ReplaceAll(field, "\"", "\"\"") + '"';
}

bool IsReportPath(std::string_view path) {
  return EndsWith(path, ".csv") || EndsWith(path, ".xlsx");
}

void WriteImportReport(const PriceImporter& importer, FileHelper& files, SpreadsheetApplication& spreadsheets,
                       std::string_view path) {
  if (EndsWith(path, ".xlsx")) {
    WriteWorkbook(importer, spreadsheets, path);
  } else {
    WriteCsv(importer, files, path);
  }
}

}  // namespace tolvan
