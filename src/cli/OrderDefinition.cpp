#include "cli/OrderDefinition.h"

#include <algorithm>

namespace tolvan {

std::vector<OptionDefinition> GlobalOptions() {
  return {
      {.name = "--host",
       .summary = "configuración del host; si falta, la de $TOLVAN_HOST o tolvan/tolvan.ini en la carpeta XDG",
       .valueName = "RUTA",
       .isPath = true},
      {.name = "--json", .summary = "un documento JSON en la salida estándar y nada más en ella"},
      {.name = "--silencio", .summary = "sin indicación de progreso"},
      {.name = "--si", .summary = "responde que sí a las preguntas"},
  };
}

std::vector<std::string> OrderNames(std::span<const OrderDefinition> orders) {
  std::vector<std::string> names;
  for (const OrderDefinition& order : orders) names.push_back(order.name);
  return names;
}

bool ParsedOrder::Has(const std::string& optionName) const {
  return std::ranges::any_of(options, [&](const GivenOption& given) { return given.name == optionName; });
}

std::string ParsedOrder::Value(const std::string& optionName, const std::string& otherwise) const {
  std::string value = otherwise;
  for (const GivenOption& given : options) {
    if (given.name == optionName) value = given.value;
  }
  return value;
}

}  // namespace tolvan
