#pragma once

#include "cli/Order.h"

namespace tolvan {

/// Makes a demo store in a folder.
class OrderDemo : public Order {
 public:
  OrderDefinition Definition() const override;
  ExitCode Run(OrderCall& call) const override;
};

}  // namespace tolvan
