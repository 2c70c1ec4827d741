#pragma once

#include "cli/Order.h"

namespace tolvan {

class OrderImportarExcel final : public Order {
 public:
  OrderDefinition Definition() const override;
  ExitCode Run(OrderCall& call) const override;
};

}  // namespace tolvan
