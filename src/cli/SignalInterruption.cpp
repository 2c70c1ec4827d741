#include "cli/SignalInterruption.h"

#include <csignal>
#include <ostream>

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

SignalInterruption::SignalInterruption(std::ostream& messages, bool drawsThere)
    : messages_(messages), drawsThere_(drawsThere) {
  Install(SIGINT);
  Install(SIGTERM);
  std::signal(SIGPIPE, SIG_IGN);  // a reader that goes away is a failed write, not a sudden end
  std::signal(SIGXFSZ, SIG_IGN);  // and so is a file that grows past the user's limit
}

bool SignalInterruption::Requested() const noexcept {
  return requested != 0;
}

void SignalInterruption::WaitBegins(std::string_view text) const noexcept {
  try {
    if (text == lastWait_) return;
    lastWait_ = text;
    messages_ << (drawsThere_ ? "\r\x1B[K" : "") << text << std::endl;
  } catch (const std::exception&) {
    return;  // it waits all the same
  }
}

}  // namespace tolvan
