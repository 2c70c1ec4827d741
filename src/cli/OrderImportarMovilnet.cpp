#include "cli/OrderImportarMovilnet.h"

#include "base/Text.h"
#include "cli/ImportOrder.h"
#include "ui/ActionTable.h"

namespace tolvan {
namespace {

constexpr std::string_view associate = "--asociar";
constexpr std::string_view setCode = "--codigo";

/// "3=ITEM", or "h6=ITEM" by the row of the sheet.
RowChange ChangeOf(const GivenOption& option) {
  const bool associates = option.name == associate;
  const std::size_t sign = option.value.find('=');
  std::string_view number = std::string_view(option.value).substr(0, sign);
  const bool onSheet = number.starts_with('h');
  if (onSheet) number.remove_prefix(1);
  const auto row = ParseInteger(number);
  const bool usable = sign != std::string::npos && row && *row > 0;
  if (!usable || (!associates && sign + 1 == option.value.size())) {
    throw CommandFailure(ExitCode::Usage,
                         option.name + " espera " + (associates ? "FILA=ITEM" : "FILA=CODIGO") + ", no \"" +
                             option.value +
                             "\". FILA cuenta los renglones leídos; la fila de la hoja es h y su número");
  }
  return {.kind = associates ? RowChange::Kind::Associate : RowChange::Kind::SetCode,
          .row = *row,
          .onSheet = onSheet,
          .value = option.value.substr(sign + 1)};
}

}  // namespace

OrderDefinition OrderImportarMovilnet::Definition() const {
  OrderDefinition order{.name = "importar-movilnet",
                        .summary = "Importa la lista de precios de teléfonos y módems de Movilnet",
                        .arguments = {{.name = "LIBRO", .summary = "la lista (.xls o .xlsx)", .isPath = true}},
                        .options = ImportOptions(),
                        .notes =
                            "Todo se aplica en una sola transacción, o nada. FILA cuenta los renglones leídos, "
                            "desde 1, como «fila» en --json; con una h delante es la fila de la hoja, como en la "
                            "tabla: --asociar h4=ITEM. --asociar y --codigo valen en el orden en que se dan."};
  order.options.push_back({.name = std::string(associate),
                           .summary = "asocia el renglón a un Item existente; sin ITEM quita la asociación",
                           .valueName = "FILA=ITEM",
                           .repeated = true});
  order.options.push_back({.name = std::string(setCode),
                           .summary = "establece el código con que se creará el Item del renglón",
                           .valueName = "FILA=CODIGO",
                           .repeated = true});
  order.examples = {{"importar-movilnet lista.xlsx --simular", "muestra qué pasaría, sin cambiar nada"},
                    {"importar-movilnet lista.xlsx --asociar 3=TEL-0001", "une un renglón a un Item, y la importa"}};
  return order;
}

ExitCode OrderImportarMovilnet::Run(OrderCall& call) const {
  std::vector<RowChange> changes;
  for (const GivenOption& option : call.Given().options) {
    if (option.name == associate || option.name == setCode) changes.push_back(ChangeOf(option));
  }
  return RunImport(call, action::movilnetPrices, std::move(changes));
}

}  // namespace tolvan
