// Stands between a client and a PostgreSQL server on a Unix socket, and counts the round trips: how often the client
// sends something after the server has answered. So everything counts that a driver sends of its own accord, too.
#pragma once

#include <atomic>
#include <thread>
#include <vector>

#include "contract/TemporaryFolder.h"

namespace tolvan::test {

class CountingRelay {
 public:
  /// Relays to the server whose socket is in `serverFolder`.
  explicit CountingRelay(const std::filesystem::path& serverFolder);
  ~CountingRelay();
  CountingRelay(const CountingRelay&) = delete;
  CountingRelay& operator=(const CountingRelay&) = delete;

  /// Where clients find its socket; the port is the server's.
  const std::filesystem::path& Folder() const { return folder_.Path(); }

  /// How many round trips `work` takes. What is counted is over when its call returns, since it waits for its answer.
  template <class Work>
  int RoundTripsOf(const Work& work) {
    const int before = roundTrips_;
    work();
    return roundTrips_ - before;
  }

 private:
  struct Pair {
    int client = -1;
    int server = -1;
    bool clientSpoke = false;  ///< last
  };

  void Serve();
  void Accept();
  /// False when one side has ended.
  bool Relay(Pair& pair, bool fromClient, bool fromServer);
  void Drop(std::size_t index);

  TemporaryFolder folder_;
  std::filesystem::path target_;
  int listener_ = -1;
  std::atomic<bool> stopping_ = false;
  std::atomic<int> roundTrips_ = 0;
  std::vector<Pair> pairs_;  // the thread's own
  std::thread thread_;
};

}  // namespace tolvan::test
