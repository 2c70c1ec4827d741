#include "cli/ReviewPrinter.h"

#include <algorithm>
#include <array>
#include <nlohmann/json.hpp>
#include <ostream>
#include <vector>

#include "base/Text.h"

namespace tolvan {
namespace {

using nlohmann::ordered_json;

struct Group {
  RowAction action;
  std::string_view title;
};

constexpr std::array<Group, 3> groups{{{RowAction::Create, "Nuevos Items que se crearán"},
                                       {RowAction::Update, "Items que se actualizarán"},
                                       {RowAction::None, "Renglones que no se procesarán"}}};

constexpr std::array<std::string_view, 9> headings{"Fila",  "Excel", "Tolvan", "Libre", "Descripción",
                                                   "Costo", "PVP",   "Dif",    "Acción"};
constexpr std::size_t widest = 40;

using Cells = std::array<std::string, headings.size()>;

Cells CellsOf(const PriceImporter& importer, std::int32_t row) {
  Cells cells;
  cells[0] = std::to_string(importer.RowAt(row).sheetRow);
  const ReviewLine line = importer.LineOf(row);
  for (std::size_t index = 0; index < line.size(); ++index) {
    const std::string_view shown = FirstCharacters(TrimBlanks(line[index]), widest);
    // A line end or another control inside a description would break the table.
    for (const char c : shown) cells[index + 1] += static_cast<unsigned char>(c) < 0x20 ? ' ' : c;
  }
  return cells;
}

void PrintCells(std::ostream& out, const Cells& cells, const std::array<std::size_t, headings.size()>& widths,
                const std::string& remarks) {
  for (std::size_t index = 0; index < cells.size(); ++index) {
    out << "  " << cells[index];
    const std::size_t length = CountCharacters(cells[index]);
    if (index + 1 < cells.size()) out << std::string(widths[index] - std::min(length, widths[index]), ' ');
  }
  if (!remarks.empty()) out << ": " << remarks;
  out << '\n';
}

void PrintGroup(std::ostream& out, const PriceImporter& importer, const Group& group,
                const std::vector<std::int32_t>& rows) {
  out << group.title << " (" << rows.size() << ")\n";
  Cells heading;
  std::array<std::size_t, headings.size()> widths{};
  for (std::size_t index = 0; index < headings.size(); ++index) {
    heading[index] = headings[index];
    widths[index] = CountCharacters(headings[index]);
  }
  for (const std::int32_t row : rows) {
    const Cells cells = CellsOf(importer, row);
    for (std::size_t index = 0; index < cells.size(); ++index) {
      widths[index] = std::max(widths[index], CountCharacters(cells[index]));
    }
  }
  PrintCells(out, heading, widths, {});
  for (const std::int32_t row : rows) {
    PrintCells(out, CellsOf(importer, row), widths, importer.RowAt(row).AllRemarks());
  }
  out << '\n';
}

std::string Dump(const ordered_json& value) {
  return value.dump(-1, ' ', false, nlohmann::json::error_handler_t::replace);
}

/// Whether a text stands in JSON as it is.
bool IsPlain(std::string_view text) {
  return std::all_of(text.begin(), text.end(), [](char c) { return c >= 0x20 && c < 0x7F && c != '"' && c != '\\'; });
}

/// One object, key by key, appended to a text. A tree for each of 50,000 rows would take a third of the whole time.
class RowObject {
 public:
  explicit RowObject(std::string& out) : out_(out) { out_ += '{'; }
  ~RowObject() { out_ += '}'; }
  RowObject(const RowObject&) = delete;
  RowObject& operator=(const RowObject&) = delete;

  RowObject& Text(std::string_view key, std::string_view value) {
    Key(key);
    Value(value);
    return *this;
  }
  RowObject& Texts(std::string_view key, const std::vector<std::string>& values) {
    Key(key);
    out_ += '[';
    for (const std::string& value : values) {
      if (out_.back() != '[') out_ += ',';
      Value(value);
    }
    out_ += ']';
    return *this;
  }
  RowObject& Amount(std::string_view key, const std::optional<Currency>& value) {
    return value ? Text(key, value->ToText()) : Plain(key, "null");
  }
  RowObject& Flag(std::string_view key, bool value) { return Plain(key, value ? "true" : "false"); }
  RowObject& Plain(std::string_view key, std::string_view value) {
    Key(key);
    out_ += value;
    return *this;
  }

 private:
  void Key(std::string_view key) {
    if (out_.back() != '{') out_ += ',';
    out_.append("\"").append(key).append("\":");
  }
  void Value(std::string_view value) {
    if (IsPlain(value)) {
      out_.append("\"").append(value).append("\"");
    } else {
      out_ += Dump(value);
    }
  }

  std::string& out_;
};

void AppendRow(std::string& out, const ReviewRow& row) {
  RowObject object(out);
  object.Plain("fila", std::to_string(row.number))
      .Plain("fila_hoja", std::to_string(row.sheetRow))
      .Text("codigo", row.code)
      .Text("descripcion", row.description)
      .Text("marca", row.brand)
      .Text("departamento", row.department)
      .Amount("costo", row.cost)
      .Amount("pvp", row.price)
      .Plain("accion", std::to_string(static_cast<int>(row.action)))
      .Text("asociado", row.associated)
      .Flag("libre", row.codeFree)
      .Flag("costo_cambia", row.costChanged)
      .Flag("pvp_cambia", row.priceChanged)
      .Amount("diferencia", row.difference)
      .Text("motivo", row.reason)
      .Texts("observaciones", row.remarks);
}

/// null for a list that was read whole.
std::string EndJson(const ReadingEnd& end) {
  if (!end.Early()) return "null";
  return Dump(ordered_json{{"fila_hoja", end.row}, {"quedan", end.following}});
}

}  // namespace

void PrintReview(std::ostream& out, const PriceImporter& importer) {
  for (const Group& group : groups) {
    std::vector<std::int32_t> rows;
    for (std::int32_t row = 1; row <= importer.NumeroRenglones(); ++row) {
      if (importer.RowAt(row).action == group.action) rows.push_back(row);
    }
    if (!rows.empty()) PrintGroup(out, importer, group, rows);
  }
}

std::string ReviewJson(const PriceImporter& importer, bool applied, const std::string& error) {
  std::array<int, 3> counts{};
  std::string rows;
  for (std::int32_t number = 1; number <= importer.NumeroRenglones(); ++number) {
    const ReviewRow row = importer.RowAt(number);
    ++counts.at(static_cast<std::size_t>(row.action));
    rows += number == 1 ? "\n    " : ",\n    ";
    AppendRow(rows, row);
  }
  const ordered_json summary{
      {"nuevos_items", counts[2]}, {"precios_actualizados", counts[1]}, {"no_procesados", counts[0]}};
  std::string document = "{\n  \"renglones\": " + std::to_string(importer.NumeroRenglones());
  document += ",\n  \"nuevos\": " + std::to_string(importer.NumeroNuevos());
  document += ",\n  \"asociados\": " + std::to_string(importer.NumeroAsociados());
  document += std::string(",\n  \"aplicado\": ") + (applied ? "true" : "false");
  document += ",\n  \"resumen\": " + Dump(summary);
  document += ",\n  \"lectura_termina\": " + EndJson(importer.End());
  if (!error.empty()) document += ",\n  \"error\": " + Dump(error);
  return document + ",\n  \"filas\": [" + rows + (rows.empty() ? "]\n}" : "\n  ]\n}");
}

}  // namespace tolvan
