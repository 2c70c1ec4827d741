#include "support/LoopbackServer.h"

#include <poll.h>
#include <unistd.h>

#include <cstdlib>
#include <stdexcept>

#include "support/ChildProcess.h"

namespace tolvan::test {
namespace {

constexpr int startMilliseconds = 10'000;

}  // namespace

LoopbackServer::LoopbackServer(const std::string& program, const std::vector<std::string>& arguments) {
  int ends[2];
  if (::pipe(ends) != 0) throw std::runtime_error("no pipe");
  std::vector<std::string> words{TOLVAN_PYTHON, std::string(TOLVAN_TEST_SUPPORT_FOLDER) + "/" + program};
  words.insert(words.end(), arguments.begin(), arguments.end());
  process_ = StartProgram(std::move(words), ends[1]);
  ::close(ends[1]);
  pollfd waiting{ends[0], POLLIN, 0};
  char line[16] = {};
  if (::poll(&waiting, 1, startMilliseconds) == 1 && ::read(ends[0], line, sizeof line - 1) > 0)
    port_ = std::atoi(line);
  ::close(ends[0]);
  if (port_ != 0) return;
  KillChild(process_);
  throw std::runtime_error(program + " does not start");
}

LoopbackServer::~LoopbackServer() {
  KillChild(process_);
}

}  // namespace tolvan::test
