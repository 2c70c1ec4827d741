#pragma once

#include "cli/Order.h"

namespace tolvan {

/// The upload of day totals to the reporting server.
class OrderSubirVentas : public Order {
 public:
  OrderDefinition Definition() const override;
  ExitCode Run(OrderCall& call) const override;
};

}  // namespace tolvan
