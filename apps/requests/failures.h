// The exceptions about input and output.
#pragma once

#include <cerrno>
#include <cstddef>
#include <cstring>
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

}  // namespace next_steps_requests
