// System calls on a descriptor that may be non-blocking. The flag belongs to everyone who shares the pipe or
// the terminal, so it is neither expected nor changed.
#pragma once

#include <cerrno>
#include <poll.h>

namespace next_steps_requests {

// Whether a read or a write of `descriptor` that has just failed can be repeated. It can if it was
// interrupted; if it would block, this waits until one of `events`, POLLIN or POLLOUT, is there.
inline bool can_repeat(int descriptor, decltype(pollfd::events) events) noexcept {
  if (errno == EAGAIN) {
    pollfd awaited{.fd = descriptor, .events = events, .revents = 0};
    if (::poll(&awaited, 1, -1) > 0) return true;
  }
  return errno == EINTR;
}

}  // namespace next_steps_requests
