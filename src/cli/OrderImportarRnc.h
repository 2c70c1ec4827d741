#pragma once

#include "cli/Order.h"

namespace tolvan {

/// Imports the taxpayer registry.
class OrderImportarRnc : public Order {
 public:
  OrderDefinition Definition() const override;
  ExitCode Run(OrderCall& call) const override;
};

}  // namespace tolvan
