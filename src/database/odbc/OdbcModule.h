// How a server database is opened, and the entry point of the module that holds everything of ODBC. It is a library of
// its own, loaded when a server database is configured, so that the start of a store on SQLite does not pay for it.
#pragma once

#include <chrono>
#include <string>

#include "host/DatabaseServices.h"
#include "host/UserInterface.h"

namespace tolvan {

/// How a server database is opened and how long its calls may take.
struct OdbcOptions {
  /// The server's; never null. Must outlive the connection.
  const SqlDialect* dialect = nullptr;
  /// The ODBC connection string, UTF-8. It may hold a password and never enters a message.
  std::string connection;
  /// How long the connecting may take.
  std::chrono::seconds loginLimit{15};
  /// How long the server may work on one call; at least one second.
  std::chrono::seconds statementLimit{30};
  /// How much longer than its limit a call is waited for before the connection is given up.
  std::chrono::milliseconds grace{2'000};
  /// Asked while the server works; null is never. Must outlive the connection.
  const Interruption* interruption = nullptr;
};

inline constexpr const char* odbcModuleFile = "libtolvan_odbc.so";

}  // namespace tolvan

extern "C" {

/// Connects; the caller owns the result and deletes it. Never null. Throws as HostApplication::Database.
using TolvanOpenOdbcDatabase = tolvan::DatabaseServices*(const tolvan::OdbcOptions& options);

TolvanOpenOdbcDatabase tolvanOpenOdbcDatabase;
}
