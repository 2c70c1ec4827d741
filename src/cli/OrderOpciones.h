#pragma once

#include "cli/Order.h"

namespace tolvan {

/// Lists, reads and writes the settings of the section.
class OrderOpciones : public Order {
 public:
  OrderDefinition Definition() const override;
  ExitCode Run(OrderCall& call) const override;
};

}  // namespace tolvan
