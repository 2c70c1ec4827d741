#include "cli/SignalInterruption.h"

#include <csignal>

namespace tolvan {
namespace {

// A signal handler reaches nothing else. NOLINTNEXTLINE(cppcoreguidelines-avoid-non-const-global-variables)
volatile std::sig_atomic_t requested = 0;

extern "C" void OnSignal(int) {
  requested = 1;
}

void Install(int signal) {
  struct sigaction handler {};
  handler.sa_handler = OnSignal;
  handler.sa_flags = static_cast<int>(SA_RESETHAND);  // the second one takes the default way
  sigemptyset(&handler.sa_mask);
  sigaction(signal, &handler, nullptr);
}

}  // namespace

SignalInterruption::SignalInterruption() {
  Install(SIGINT);
  Install(SIGTERM);
  std::signal(SIGPIPE, SIG_IGN);  // a reader that goes away is a failed write, not a sudden end
  std::signal(SIGXFSZ, SIG_IGN);  // and so is a file that grows past the user's limit
}

bool SignalInterruption::Requested() const noexcept {
  return requested != 0;
}

}  // namespace tolvan
