#pragma once

#include "cli/Order.h"

namespace tolvan {

class OrderImportarMovilnet final : public Order {
 public:
  OrderDefinition Definition() const override;
  ExitCode Run(OrderCall& call) const override;
};

}  // namespace tolvan
