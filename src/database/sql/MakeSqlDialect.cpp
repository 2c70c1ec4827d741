#include "database/sql/MakeSqlDialect.h"

#include "database/sql/AccessDialect.h"
#include "database/sql/PostgreSqlDialect.h"
#include "database/sql/SqlServerDialect.h"
#include "database/sql/SqliteDialect.h"

namespace tolvan {

std::unique_ptr<SqlDialect> MakeSqlDialect(DatabaseEngine engine) {
  switch (engine) {
    case DatabaseEngine::SqlServer:
      return std::make_unique<SqlServerDialect>();
    case DatabaseEngine::PostgreSql:
      return std::make_unique<PostgreSqlDialect>();
    case DatabaseEngine::Access:
      return std::make_unique<AccessDialect>();
    case DatabaseEngine::Sqlite:
      break;
  }
  return std::make_unique<SqliteDialect>();
}

}  // namespace tolvan
