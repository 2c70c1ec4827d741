#pragma once

#include "cli/Order.h"

namespace tolvan {

/// The daily sales file as the accepted panel writes it.
class OrderVentas : public Order {
 public:
  OrderDefinition Definition() const override;
  ExitCode Run(OrderCall& call) const override;
};

}  // namespace tolvan
