// Failures of input and output.
#pragma once

#include <cerrno>
#include <cstddef>
#include <cstring>
#include <poll.h>
#include <stdexcept>
#include <string>

namespace next_steps_requests {

// Invalid input. The message is "SOURCE:LINE:COLUMN: why", or "SOURCE: why" for the input as a whole.
class InputRejected : public std::runtime_error {
 public:
  InputRejected(const std::string& source, const std::string& why)
      : std::runtime_error(source + ": " + why) {}
  // `line` and `column` count from 1.
  InputRejected(const std::string& source, std::size_t line, std::size_t column, const std::string& why)
      : std::runtime_error(source + ":" + std::to_string(line) + ":" + std::to_string(column) + ": " + why) {}
};

// A failed system call for input or output.
class IoFailed : public std::runtime_error {
 public:
  // Takes the reason from errno.
  explicit IoFailed(const std::string& name)
      : std::runtime_error(name + ": " + std::strerror(errno)) {}  // NOLINT(concurrency-mt-unsafe)
};

// Whether a read or a write of `descriptor` that has just failed can be repeated. It can if it was
// interrupted; if it would block, this waits until one of `events`, POLLIN or POLLOUT, is there. The flag
// O_NONBLOCK belongs to everyone who shares the pipe or the terminal, so it is neither expected nor changed.
inline bool can_repeat(int descriptor, decltype(pollfd::events) events) noexcept {
  if (errno == EAGAIN) {
    pollfd awaited{.fd = descriptor, .events = events, .revents = 0};
    if (::poll(&awaited, 1, -1) > 0) return true;
  }
  return errno == EINTR;
}

}  // namespace next_steps_requests
