#include "store/DatabaseProviders.h"

#include <algorithm>

#include "database/odbc/OdbcModule.h"
#include "database/sqlite/SqliteDatabaseServices.h"
#include "system/posix/ModuleLoader.h"
#include "system/posix/PosixPath.h"

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

std::unique_ptr<DatabaseServices> OpenServer(const HostConfiguration& configuration, const Interruption& interruption) {
  OdbcOptions options;
  options.connection = configuration.database.connection;
  options.engine = configuration.database.engine;
  options.statementLimit = std::max(configuration.database.statementLimit, std::chrono::seconds(1));
  options.loginLimit = std::min(options.loginLimit, options.statementLimit);
  options.interruption = &interruption;
  ModuleLoader module(odbcModuleFile, "el módulo de bases de datos de servidor");
  HostError* raised = nullptr;
  std::unique_ptr<DatabaseServices> database(
      module.EntryPoint<TolvanOpenOdbcDatabase>("tolvanOpenOdbcDatabase")(options, &raised));
  const std::unique_ptr<HostError> failure(raised);
  if (failure) throw HostError(*failure);
  return database;
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
  return OpenServer(configuration, interruption);
}

}  // namespace tolvan
