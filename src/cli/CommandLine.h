// Reads the command line against the definitions of the orders.
#pragma once

#include <span>
#include <string>
#include <vector>

#include "cli/OrderDefinition.h"

namespace tolvan {

struct ParsedCommand {
  std::string order;   ///< empty when none was given
  ParsedOrder given;   ///< the order's own arguments and options
  ParsedOrder global;  ///< the options of GlobalOptions
  bool help = false;
  bool version = false;
};

/// Throws CommandFailure Usage, in Spanish, for what is unknown, missing or not one of the choices. With `help` or
/// `version` nothing else is checked.
ParsedCommand ParseCommandLine(const std::vector<std::string>& arguments, std::span<const OrderDefinition> orders);

}  // namespace tolvan
