// Writes to standard output and reports every failure.
#pragma once

#include <string>
#include <string_view>

#include "vantrex/values/json_value.h"

namespace next_steps_program {

// Buffers what is written. The destructor does not flush. Threads: one at a time.
class Output {
 public:
  // Throws IoFailed and std::bad_alloc.
  void write(std::string_view text);
  // Writes the buffer to standard output and empties it. Throws IoFailed, for example when the disk is full.
  void flush();

 private:
  std::string waiting_;
};

// Prints `answer`, compact or indented, and a line feed. Throws IoFailed and std::bad_alloc.
void print_answer(vantrex::values::JsonObject answer, bool pretty);

}  // namespace next_steps_program
