#pragma once

#include "cli/Order.h"

namespace tolvan {

/// `crc32`: the checksum of a file of any size, or of a text.
class OrderCrc32 : public Order {
 public:
  OrderDefinition Definition() const override;
  ExitCode Run(OrderCall& call) const override;
};

}  // namespace tolvan
