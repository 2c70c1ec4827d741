// The upload lotes (transport batches) of one company and site. At most one is open at a time: the database's unique
// index over open lotes sees to it when two programs open at once. Where the host's database has no such index, Find
// gives the newest and Close closes all.
#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

#include "host/DatabaseServices.h"
#include "host/SqlStatement.h"

namespace tolvan {

struct OpenedLote {
  std::int64_t number = 0;
  bool isNew = false;  ///< false: it was open already, perhaps opened by another program a moment before
};

struct ClosedLotes {
  std::optional<std::int64_t> newest;  ///< the one that Find would have given
  std::int64_t count = 0;
};

/// Every operation throws HostError.
class LoteTransporte {
 public:
  /// Database and dialect outlive this object.
  LoteTransporte(DatabaseServices& database, const SqlDialect& dialect, std::int32_t companyId, std::int32_t siteId);

  /// The number of the newest open lote; nothing when none is open.
  std::optional<std::int64_t> Find();

  /// Opens a lote unless one is open.
  OpenedLote Open();

  /// Closes every open lote with the server's date and time. Closing again is harmless.
  ClosedLotes Close();

  /// The statements, with the columns that a caller wants to see (such as "idLoteTransporte").
  SqlStatement FindStatement(std::string_view columns) const;
  SqlStatement OpenStatement() const;
  SqlStatement CloseStatement() const;

 private:
  std::optional<OpenedLote> TryInsert();

  DatabaseServices& database_;
  const SqlDialect& dialect_;
  std::int32_t companyId_;
  std::int32_t siteId_;
};

}  // namespace tolvan
