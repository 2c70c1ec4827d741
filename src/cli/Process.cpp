#include "cli/Process.h"

#include <fcntl.h>
#include <poll.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <ostream>

#include "base/Text.h"

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

/// A word that is longer than a line stays whole.
std::string BrokenAtBlanks(std::string_view line, std::size_t columns) {
  std::string broken;
  std::size_t taken = 0;
  for (const std::string_view word : Split(line, ' ')) {
    const std::size_t width = CountColumns(word);
    if (word.data() != line.data()) {
      const bool fits = taken + 1 + width <= columns;
      broken += fits ? ' ' : '\n';
      taken = fits ? taken + 1 : 0;
    }
    broken += word;
    taken += width;
  }
  return broken;
}

}  // namespace

void OccupyStandardDescriptors() {
  for (int descriptor = ::open("/dev/null", O_RDONLY); descriptor >= 0; descriptor = ::dup(descriptor)) {
    if (descriptor <= STDERR_FILENO) continue;
    ::close(descriptor);
    return;
  }
}

DescriptorBuffer::int_type DescriptorBuffer::overflow(int_type character) {
  if (sync() != 0) return traits_type::eof();
  if (traits_type::eq_int_type(character, traits_type::eof())) return traits_type::not_eof(character);
  return sputc(traits_type::to_char_type(character));
}

int DescriptorBuffer::sync() {
  const char* next = pbase();
  while (next < pptr() && !readerIsGone_ && errorNumber_ == 0) {
    const ssize_t written = ::write(descriptor_, next, static_cast<std::size_t>(pptr() - next));
    if (written < 0) {
      TakeError(errno);
    } else {
      next += written;
    }
  }
  setp(bytes_.begin(), bytes_.end());
  return errorNumber_ == 0 ? 0 : -1;
}

// EINTR is an error here: no signal interrupts a write but those by which a user ends the command.
void DescriptorBuffer::TakeError(int errorNumber) {
  if (errorNumber == EPIPE) {
    readerIsGone_ = true;
  } else if (errorNumber == EAGAIN) {  // the reader has made the pipe not wait; so the waiting is done here
    pollfd ready{.fd = descriptor_, .events = POLLOUT, .revents = 0};
    if (::poll(&ready, 1, -1) < 0) errorNumber_ = errno;
  } else {
    errorNumber_ = errorNumber;
  }
}

MessageBuffer::int_type MessageBuffer::overflow(int_type character) {
  if (traits_type::eq_int_type(character, traits_type::eof())) return traits_type::not_eof(character);
  line_ += traits_type::to_char_type(character);
  return line_.back() != '\n' || PassOn() ? character : traits_type::eof();
}

int MessageBuffer::sync() {
  return PassOn() && to_->pubsync() == 0 ? 0 : -1;
}

bool MessageBuffer::PassOn() {
  std::string line = std::exchange(line_, {});
  const std::optional<std::size_t> columns = columns_ ? columns_() : std::nullopt;
  // What moves to the beginning of the line takes no columns.
  const std::size_t start = line.starts_with(clearLine) ? clearLine.size() : 0;
  if (columns) line.replace(start, line.npos, BrokenAtBlanks(std::string_view(line).substr(start), *columns));
  return to_->sputn(line.data(), std::ssize(line)) == std::ssize(line);
}

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
    messages_ << (drawsThere_ ? clearLine : std::string_view()) << text << std::endl;
  } catch (const std::exception&) {
    return;  // it waits all the same
  }
}

}  // namespace tolvan
