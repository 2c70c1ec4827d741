#pragma once

#include "cli/Order.h"

namespace tolvan {

/// The help of the command or of one order.
class OrderAyuda : public Order {
 public:
  static constexpr const char* name = "ayuda";

  OrderDefinition Definition() const override;
  ExitCode Run(OrderCall& call) const override;
};

}  // namespace tolvan
