#pragma once

#include "cli/Order.h"

namespace tolvan {

/// The unattended daily sales export.
class OrderVexlor : public Order {
 public:
  OrderDefinition Definition() const override;
  ExitCode Run(OrderCall& call) const override;
};

}  // namespace tolvan
