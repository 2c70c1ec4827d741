#include "cli/DescriptorBuffer.h"

#include <poll.h>
#include <unistd.h>

#include <cerrno>

namespace tolvan {

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

}  // namespace tolvan
