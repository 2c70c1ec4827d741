#include "platform/assembly/DatabaseProviders.h"

#include "platform/files/PosixPath.h"
#include "platform/sqlite/SqliteDatabaseServices.h"

namespace tolvan {
namespace {

std::unique_ptr<DatabaseServices> OpenSqlite(const HostConfiguration& configuration, const Interruption& interruption) {
  SqliteOptions options;
  options.path = ResolvePath(configuration.database.connection, FolderOfConfiguration(configuration));
  options.busyWait = configuration.database.statementLimit;
  options.statementLimit = configuration.database.statementLimit;
  options.interruption = &interruption;
  return std::make_unique<SqliteDatabaseServices>(options);
}

}  // namespace

std::unique_ptr<DatabaseServices> OpenConfiguredDatabase(const HostConfiguration& configuration,
                                                         const Interruption& interruption) {
  switch (configuration.database.engine) {
    case DatabaseEngine::Sqlite:
      return OpenSqlite(configuration, interruption);
    case DatabaseEngine::SqlServer:
    case DatabaseEngine::PostgreSql:
    case DatabaseEngine::Access:
      break;
  }
  throw HostError(
      HostErrorKind::Configuration,
      configuration.filePath + ": este programa se construyó sin conexión ODBC; solo admite el motor sqlite");
}

}  // namespace tolvan
