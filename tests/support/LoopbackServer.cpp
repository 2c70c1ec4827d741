#include "support/LoopbackServer.h"

#include <arpa/inet.h>
#include <poll.h>
#include <sys/prctl.h>
#include <sys/socket.h>
#include <unistd.h>

#include <csignal>
#include <cstdlib>
#include <stdexcept>

#include "support/ChildProcess.h"

namespace tolvan::test {
namespace {

constexpr int startMilliseconds = 10'000;

[[noreturn]] void Become(const std::string& program, const std::vector<std::string>& arguments, int output) {
  ::prctl(PR_SET_PDEATHSIG, SIGKILL);
  ::dup2(output, STDOUT_FILENO);
  const std::string path = std::string(TOLVAN_TEST_SUPPORT_FOLDER) + "/" + program;
  std::vector<std::string> words{"python3", path};
  words.insert(words.end(), arguments.begin(), arguments.end());
  std::vector<char*> pointers;
  for (std::string& word : words) pointers.push_back(word.data());
  pointers.push_back(nullptr);
  ::execv(TOLVAN_PYTHON, pointers.data());
  ::_exit(127);
}

}  // namespace

LoopbackServer::LoopbackServer(const std::string& program, const std::vector<std::string>& arguments) {
  int ends[2];
  if (::pipe(ends) != 0) throw std::runtime_error("no pipe");
  process_ = ::fork();
  if (process_ == 0) Become(program, arguments, ends[1]);
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

int UnusedPort() {
  const int socket = ::socket(AF_INET, SOCK_STREAM, 0);
  sockaddr_in address{};
  address.sin_family = AF_INET;
  address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  socklen_t length = sizeof address;
  auto* const generic = reinterpret_cast<sockaddr*>(&address);
  if (::bind(socket, generic, length) != 0 || ::getsockname(socket, generic, &length) != 0) return 1;
  ::close(socket);
  return ntohs(address.sin_port);
}

}  // namespace tolvan::test
