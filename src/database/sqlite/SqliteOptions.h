#pragma once

#include <chrono>
#include <string>

namespace tolvan {

class Interruption;

/// How a database file is opened and how long its calls may take.
struct SqliteOptions {
  /// UTF-8. ":memory:" is a database of this connection alone.
  std::string path;
  /// How long one call waits for another program's lock.
  std::chrono::milliseconds busyWait{5'000};
  /// False: a missing file is HostError Unreachable.
  bool createIfMissing = false;
  /// How long the database may work on one call; zero is without a limit.
  std::chrono::milliseconds statementLimit{30'000};
  /// Asked while the database works or waits; null is never. Must outlive the connection.
  const Interruption* interruption = nullptr;
};

}  // namespace tolvan
