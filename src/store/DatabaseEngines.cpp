#include "store/DatabaseEngines.h"

#include <algorithm>
#include <array>

#include "database/odbc/OdbcModule.h"
#include "database/sql/SqlDialects.h"
#include "database/sqlite/SqliteDatabaseServices.h"
#include "store/DeferredProviders.h"
#include "store/HostConfiguration.h"
#include "system/posix/PosixPath.h"
#include "system/posix/PosixServices.h"

namespace tolvan {
namespace {

template <class Dialect>
std::unique_ptr<SqlDialect> Make() {
  return std::make_unique<Dialect>();
}

constexpr std::array knownEngines{
    DatabaseEngine{Make<SqliteDialect>, OpenSqliteFile},
    DatabaseEngine{Make<SqlServerDialect>, OpenOdbcServer},
    DatabaseEngine{Make<PostgreSqlDialect>, OpenOdbcServer},
    DatabaseEngine{Make<AccessDialect>, OpenOdbcServer},
};

}  // namespace

std::span<const DatabaseEngine> DatabaseEngines() {
  return knownEngines;
}

std::string NamesOf(std::span<const DatabaseEngine> engines, bool onlyFiles) {
  std::string names;
  std::string_view last;
  for (const DatabaseEngine& engine : engines) {
    if (onlyFiles && !engine.Traits().isFile) continue;
    if (!last.empty()) names.append(names.empty() ? "" : ", ").append(last);
    last = engine.Traits().name;
  }
  return names.append(names.empty() ? "" : " o ").append(last);
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
  Deferred<TolvanOpenOdbcDatabase> module(odbcModuleFile, "tolvanOpenOdbcDatabase",
                                          "el módulo de bases de datos de servidor");
  return module.Make(options);
}

}  // namespace tolvan
