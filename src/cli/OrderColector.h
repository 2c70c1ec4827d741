#pragma once

#include "cli/Order.h"

namespace tolvan {

/// `colector`: the item-definition file of the collector device.
class OrderColector : public Order {
 public:
  OrderDefinition Definition() const override;
  ExitCode Run(OrderCall& call) const override;
};

}  // namespace tolvan
