// The options that subcommands on one answer share.
#pragma once

#include <optional>
#include <string>

#include <CLI/CLI.hpp>

#include "next_steps/request.h"
#include "next_steps/serves_option.h"

namespace next_steps_program {

// --tool, --action, --arguments, --freshness, --serves, and the answer's file.
class AnswerOptions {
 public:
  // The options are parsed into this object, which must outlive `parser`'s use.
  void add_to(CLI::App& parser);

  // Reads the answer and makes the request of it. Throws InputRejected,
  // IoFailed and std::bad_alloc. The request refers to this object.
  Request read() const;

 private:
  std::string tool_;
  std::optional<std::string> action_;
  std::string arguments_ = "null";
  std::string freshness_ = "null";
  std::string file_;
  ServesOption serves_;
};

}  // namespace next_steps_program
