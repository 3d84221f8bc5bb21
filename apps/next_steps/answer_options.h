// The options of the subcommands that read one answer: finish and explain.
#pragma once

#include <optional>
#include <string>

#include "next_steps/request.h"
#include "next_steps/serves_option.h"

namespace CLI {
class App;
}

namespace next_steps_program {

// --tool, --action, --arguments, --freshness, --serves, and the answer's file.
class AnswerOptions {
 public:
  // Adds the options to `parser`, which keeps references to this object.
  void add_to(CLI::App& parser);

  // Returns the request with the answer, which is read now. The request refers to this
  // object. Throws InputRejected, IoFailed and std::bad_alloc.
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
