// 50,000 rows are written here, so each is put together as text, key by key.
#include "cli/CommandReview.h"

#include <algorithm>
#include <array>
#include <nlohmann/json.hpp>
#include <string_view>
#include <vector>

namespace tolvan {
namespace {

using nlohmann::ordered_json;

std::string Dump(const ordered_json& value) {
  return value.dump(-1, ' ', false, nlohmann::json::error_handler_t::replace);
}

/// Whether a text needs no escapes in JSON.
bool IsPlain(std::string_view text) {
  return std::all_of(text.begin(), text.end(), [](char c) { return c >= 0x20 && c < 0x7F && c != '"' && c != '\\'; });
}

/// One object, key by key, appended to a text. A tree for every row would take a third of the whole time.
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
