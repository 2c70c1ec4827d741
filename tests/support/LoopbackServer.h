#pragma once

#include <sys/types.h>

#include <cstdio>
#include <string>
#include <vector>

namespace tolvan::test {

/// A server that lives as long as the object: one of the Python programs beside this file, on a loopback port of its
/// own choice, which it prints when it is ready.
class LoopbackServer {
 public:
  /// Waits until the program is ready. Throws std::runtime_error when it ends before.
  LoopbackServer(const std::string& program, const std::vector<std::string>& arguments);
  ~LoopbackServer();
  LoopbackServer(const LoopbackServer&) = delete;
  LoopbackServer& operator=(const LoopbackServer&) = delete;

  int Port() const { return port_; }

 private:
  std::FILE* output_ = nullptr;
  pid_t process_ = 0;
  int port_ = 0;
};

/// A port that nothing listens on: that of a service long forgotten.
constexpr int unusedPort = 1;

}  // namespace tolvan::test
