// The engines that a store can stand on: the one place that names them all. A new one is a dialect, the script of its
// schema, and a row here.
#pragma once

#include <memory>
#include <span>
#include <string>

#include "host/DatabaseServices.h"
#include "host/SqlStatement.h"
#include "host/UserInterface.h"

namespace tolvan {

struct HostConfiguration;

struct DatabaseEngine {
  /// Never null.
  std::unique_ptr<SqlDialect> (*makeDialect)();

  /// Never null. Throws HostError: Configuration when the provider's module cannot be loaded, otherwise as
  /// HostApplication::Database. `dialect` and `interruption` must outlive the result.
  std::unique_ptr<DatabaseServices> (*open)(const HostConfiguration& configuration, const SqlDialect& dialect,
                                            const Interruption& interruption);

  /// They live as long as the program.
  const EngineTraits& Traits() const { return makeDialect()->Engine(); }
};

/// The first is the one of a configuration that names none. They live as long as the program.
std::span<const DatabaseEngine> DatabaseEngines();

/// Their names for people, of all or of those whose databases are files: "uno, dos o tres".
std::string NamesOf(std::span<const DatabaseEngine> engines, bool onlyFiles = false);

/// For engines on a file of this machine, and for those that are reached over ODBC: the ways that a row can name.
std::unique_ptr<DatabaseServices> OpenSqliteFile(const HostConfiguration& configuration, const SqlDialect& dialect,
                                                 const Interruption& interruption);
std::unique_ptr<DatabaseServices> OpenOdbcServer(const HostConfiguration& configuration, const SqlDialect& dialect,
                                                 const Interruption& interruption);

}  // namespace tolvan
