// Spanish help, and the program's name and version.
#pragma once

#include <cstddef>
#include <span>
#include <string>
#include <string_view>

#include "cli/OrderDefinition.h"

namespace tolvan {

inline constexpr std::string_view programName = "tolvan-impexp";

/// "tolvan-impexp 1.2.3".
std::string VersionText();

/// "tolvan-impexp [GLOBAL] ORDEN ARGUMENTOS…" for an order.
std::string UsageLine(const OrderDefinition& order);

/// The whole line of an example.
std::string ExampleLine(const ExampleDefinition& example);

/// Help wrapped to `columns`.
std::string CommandHelp(std::span<const OrderDefinition> orders, std::size_t columns);
std::string OrderHelp(const OrderDefinition& order, std::size_t columns);

}  // namespace tolvan
