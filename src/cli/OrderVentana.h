#pragma once

#include "cli/Order.h"

namespace tolvan {

/// Starts the window program that lies beside the command, and waits for its end.
class OrderVentana : public Order {
 public:
  OrderDefinition Definition() const override;
  ExitCode Run(OrderCall& call) const override;
};

}  // namespace tolvan
