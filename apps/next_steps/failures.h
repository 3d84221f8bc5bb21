// The two ways in which a subcommand gives up.
#pragma once

#include <cerrno>
#include <cstddef>
#include <cstring>
#include <stdexcept>
#include <string>

#include "next_steps/json_reader.h"

namespace next_steps_program {

// The input breaks a rule. The message says where: SOURCE:LINE:COLUMN: why, or, of the
// whole, SOURCE: why.
class InputRejected : public std::runtime_error {
 public:
  InputRejected(const std::string& source, const std::string& why)
      : std::runtime_error(source + ": " + why) {}
  InputRejected(const std::string& source, const JsonError& error)
      : InputRejected(source, error.place().line, error) {}
  // The same for a text that is one line of the input, by its number from 1.
  InputRejected(const std::string& source, std::size_t line, const JsonError& error)
      : std::runtime_error(source + ":" + std::to_string(line) + ":" + std::to_string(error.place().column) +
                           ": " + error.what()) {}
};

// The operating system did not read or write what it was asked to.
class IoFailed : public std::runtime_error {
 public:
  // Takes the reason from errno.
  explicit IoFailed(const std::string& name)
      : std::runtime_error(name + ": " + std::strerror(errno)) {}  // NOLINT(concurrency-mt-unsafe)
};

}  // namespace next_steps_program
