#include "support/LoopbackServer.h"

#include <csignal>
#include <stdexcept>

namespace tolvan::test {

// The shell says its own number, which the server takes over. setpriv ends the server with this process.
LoopbackServer::LoopbackServer(const std::string& program, const std::vector<std::string>& arguments) {
  std::string line = "echo $$; exec setpriv --pdeathsig KILL " TOLVAN_PYTHON " " TOLVAN_TEST_SUPPORT_FOLDER "/";
  line += program;
  for (const std::string& argument : arguments) line += " '" + argument + "'";
  output_ = ::popen(line.c_str(), "re");
  if (std::fscanf(output_, "%d %d", &process_, &port_) == 2) return;
  ::pclose(output_);
  throw std::runtime_error(program + " does not start");
}

LoopbackServer::~LoopbackServer() {
  ::kill(process_, SIGKILL);
  ::pclose(output_);
}

}  // namespace tolvan::test
