// The embedded engine: booleans 1 and 0, dates as ISO text, which is also how its columns hold them.
#pragma once

#include "database/sql/SqlDialectBase.h"

namespace tolvan {

class SqliteDialect : public SqlDialectBase {
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
