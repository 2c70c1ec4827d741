#pragma once

#include "cli/Order.h"

namespace tolvan {

/// `lote`: the upload transport batches of the configured company and site.
class OrderLote : public Order {
 public:
  OrderDefinition Definition() const override;
  ExitCode Run(OrderCall& call) const override;
};

}  // namespace tolvan
