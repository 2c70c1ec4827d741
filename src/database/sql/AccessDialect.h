// Access: True and False, dates between #. The ISO order inside # is read the same way under every regional setting.
#pragma once

#include "database/sql/SqlDialectBase.h"

namespace tolvan {

class AccessDialect final : public SqlDialectBase {
 public:
  const EngineTraits& Engine() const override;
  std::string CurrentMoment() const override;
  SqlStatement InsertUnlessPresent(std::string_view table, std::string_view keyTable,
                                   std::span<const std::string_view> columns,
                                   std::span<const SqlLiteral> values) const override;

 protected:
  std::string BooleanLiteral(bool value) const override;
  std::string MomentLiteral(const DateTime& moment) const override;
};

}  // namespace tolvan
