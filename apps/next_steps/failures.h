// The exceptions that end a subcommand.
#pragma once

#include <cerrno>
#include <cstddef>
#include <cstring>
#include <stdexcept>
#include <string>

#include "next_steps/json_reader.h"

namespace next_steps_program {

// Invalid input. The message is "SOURCE:LINE:COLUMN: why", or "SOURCE: why" for the input as
// a whole.
class InputRejected : public std::runtime_error {
 public:
  InputRejected(const std::string& source, const std::string& why)
      : std::runtime_error(source + ": " + why) {}
  InputRejected(const std::string& source, const JsonError& error)
      : InputRejected(source, error.place().line, error) {}
  // For an error in one line of the input; `line` is its number, from 1.
  InputRejected(const std::string& source, std::size_t line, const JsonError& error)
      : std::runtime_error(source + ":" + std::to_string(line) + ":" + std::to_string(error.place().column) +
                           ": " + error.what()) {}
};

// A failed system call for input or output.
class IoFailed : public std::runtime_error {
 public:
  // Takes the reason from errno.
  explicit IoFailed(const std::string& name)
      : std::runtime_error(name + ": " + std::strerror(errno)) {}  // NOLINT(concurrency-mt-unsafe)
};

}  // namespace next_steps_program
