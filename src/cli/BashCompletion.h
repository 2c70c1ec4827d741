// The completion of the command for bash, from the definitions of the orders.
#pragma once

#include <span>
#include <string>

#include "cli/OrderDefinition.h"

namespace tolvan {

/// A script for bash to read. A word of an order is completed by what the order takes in its place: options behind a
/// dash, choices, file names, the names of orders. An argument that ends in "=" waits for its value.
std::string BashCompletion(std::span<const OrderDefinition> orders);

}  // namespace tolvan
