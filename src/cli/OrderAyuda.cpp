#include "cli/OrderAyuda.h"

#include <algorithm>
#include <nlohmann/json.hpp>
#include <ostream>

#include "cli/HelpText.h"
#include "cli/Suggestion.h"

namespace tolvan {
namespace {

std::string HelpOf(const std::vector<std::string>& words, std::size_t columns) {
  const std::vector<OrderDefinition> orders = AllDefinitions();
  if (words.empty()) return CommandHelp(orders, columns);
  const auto order = std::ranges::find(orders, words.front(), &OrderDefinition::name);
  if (order != orders.end()) return OrderHelp(*order, columns);
  throw CommandFailure(ExitCode::Usage, UnknownOrder(words.front(), OrderNames(orders)));
}

}  // namespace

OrderDefinition OrderAyuda::Definition() const {
  return {.name = name,
          .summary = "Muestra esta ayuda, o la de una orden",
          .arguments = {{.name = "ORDEN", .summary = "la orden", .required = false, .isOrder = true}},
          .examples = {{"ayuda", "las órdenes y las opciones generales"},
                       {"ayuda importar-excel", "lo mismo que importar-excel --ayuda"}}};
}

ExitCode OrderAyuda::Run(OrderCall& call) const {
  const std::string text = HelpOf(call.Given().arguments, ColumnsForText(call.OutColumns()));
  if (call.WantsJson()) {
    call.PrintJson(nlohmann::ordered_json{{"ayuda", text}}.dump(2));
  } else {
    call.Out() << text;
  }
  return ExitCode::Done;
}

}  // namespace tolvan
