#pragma once

#include "cli/Order.h"

namespace tolvan {

/// `esquema`: the tables that the component works on, for the configured engine.
class OrderEsquema : public Order {
 public:
  OrderDefinition Definition() const override;
  ExitCode Run(OrderCall& call) const override;
};

}  // namespace tolvan
