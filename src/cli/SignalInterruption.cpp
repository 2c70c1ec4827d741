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

/// A signal that the program was started without, as by nohup, stays ignored.
void Install(int signal, unsigned flags) {
  struct sigaction handler {};
  sigaction(signal, nullptr, &handler);
  if (handler.sa_handler == SIG_IGN) return;
  handler.sa_handler = OnSignal;
  handler.sa_flags = static_cast<int>(flags);
  sigemptyset(&handler.sa_mask);
  sigaction(signal, &handler, nullptr);
}

}  // namespace

SignalInterruption::SignalInterruption(std::ostream& messages, bool drawsThere)
    : messages_(messages), drawsThere_(drawsThere) {
  constexpr unsigned once = SA_RESETHAND;  // the second one takes the default way
  Install(SIGINT, once);
  Install(SIGTERM, once);
  Install(SIGHUP, 0);             // a terminal that closes may send it twice, and nobody is waiting there any more
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
