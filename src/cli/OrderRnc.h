#pragma once

#include "cli/Order.h"

namespace tolvan {

/// Recognises tax identifiers and, when asked to, looks their names up.
class OrderRnc : public Order {
 public:
  OrderDefinition Definition() const override;
  ExitCode Run(OrderCall& call) const override;
};

}  // namespace tolvan
