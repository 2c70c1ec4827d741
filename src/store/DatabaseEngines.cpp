#include "store/DatabaseEngines.h"

#include <algorithm>
#include <array>

#include "database/odbc/OdbcModule.h"
#include "database/sql/SqlDialects.h"
#include "database/sqlite/SqliteDatabaseServices.h"
#include "store/HostConfiguration.h"
#include "system/posix/PosixPath.h"
#include "system/posix/PosixServices.h"

namespace tolvan {
namespace {

template <class Dialect>
std::unique_ptr<SqlDialect> Make() {
  return std::make_unique<Dialect>();
}

constexpr std::array engines{
    DatabaseEngine{Make<SqliteDialect>, OpenSqliteFile},
    DatabaseEngine{Make<SqlServerDialect>, OpenOdbcServer},
    DatabaseEngine{Make<PostgreSqlDialect>, OpenOdbcServer},
    DatabaseEngine{Make<AccessDialect>, OpenOdbcServer},
};

}  // namespace

std::span<const DatabaseEngine> DatabaseEngines() {
  return engines;
}

std::unique_ptr<DatabaseServices> OpenSqliteFile(const HostConfiguration& configuration, const SqlDialect& /*dialect*/,
                                                 const Interruption& interruption) {
  SqliteOptions options;
  options.path = ResolvePath(configuration.database.connection, FolderOfConfiguration(configuration));
  options.busyWait = configuration.database.statementLimit;
  options.statementLimit = configuration.database.statementLimit;
  options.interruption = &interruption;
  return std::make_unique<SqliteDatabaseServices>(options);
}

std::unique_ptr<DatabaseServices> OpenOdbcServer(const HostConfiguration& configuration, const SqlDialect& dialect,
                                                 const Interruption& interruption) {
  OdbcOptions options;
  options.connection = configuration.database.connection;
  options.dialect = &dialect;
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

}  // namespace tolvan
