// SQL Server: BIT, dates with the T that no language setting of the server reinterprets, N'…' only where it is needed.
// A text that holds only ASCII stays without the N, so that an index on a VARCHAR column of a host's older database is
// still used and the statements read as they always have.
#pragma once

#include "database/sql/SqlDialectBase.h"

namespace tolvan {

class SqlServerDialect final : public SqlDialectBase {
 public:
  const EngineTraits& Engine() const override;
  std::string CurrentMoment() const override;
  SqlStatement InsertUnlessPresent(std::string_view table, std::string_view keyTable,
                                   std::span<const std::string_view> columns,
                                   std::span<const SqlLiteral> values) const override;

 protected:
  std::string BooleanLiteral(bool value) const override;
  std::string MomentLiteral(const DateTime& moment) const override;
  std::string TextLiteral(std::string_view text) const override;
};

}  // namespace tolvan
