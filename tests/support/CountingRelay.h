// Stands between a client and a PostgreSQL server on a Unix socket, and counts the round trips: how often the client
// sends something after the server has answered. So everything counts that a driver sends of its own accord, too.
#pragma once

#include "contract/TemporaryFolder.h"
#include "support/LoopbackServer.h"

namespace tolvan::test {

class CountingRelay {
 public:
  /// Relays to the server whose socket is in `serverFolder`.
  explicit CountingRelay(const std::filesystem::path& serverFolder)
      : process_("counting_relay.py", {serverFolder, folder_.Path()}) {}

  /// Where clients find its socket; the port is the server's.
  const std::filesystem::path& Folder() const { return folder_.Path(); }

  /// How many round trips `work` takes. What is counted is over when its call returns, since it waits for its answer.
  template <class Work>
  int RoundTripsOf(const Work& work) {
    const int before = RoundTrips();
    work();
    return RoundTrips() - before;
  }

 private:
  int RoundTrips() const { return static_cast<int>(std::filesystem::file_size(folder_.File("trips"))); }

  TemporaryFolder folder_;
  LoopbackServer process_;
};

}  // namespace tolvan::test
