#pragma once

#include <chrono>
#include <string>

#include "host/SqlStatement.h"

namespace tolvan {

class Interruption;

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

}  // namespace tolvan
