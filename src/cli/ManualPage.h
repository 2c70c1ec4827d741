// The manual page, made from the definitions of the orders.
#pragma once

#include <span>
#include <string>

#include "cli/OrderDefinition.h"

namespace tolvan {

/// A page for section 1 in roff, Spanish.
std::string ManualPage(std::span<const OrderDefinition> orders);

}  // namespace tolvan
