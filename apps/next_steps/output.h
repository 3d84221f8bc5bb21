// Writing to standard output, with every failure noticed.
#pragma once

#include <string>
#include <string_view>

#include "vantrex/values/json_value.h"

namespace next_steps_program {

// Collects what is written; what is not flushed is lost. Threads: one at a
// time.
class Output {
 public:
  // Throws IoFailed and std::bad_alloc.
  void write(std::string_view text);
  // Hands everything to the operating system. Throws IoFailed, among others for
  // a full disk.
  void flush();

 private:
  std::string waiting_;
};

// Prints `answer` as it is sent, or indented, and a line feed. Throws IoFailed
// and std::bad_alloc.
void print_answer(vantrex::values::JsonObject answer, bool pretty);

}  // namespace next_steps_program
