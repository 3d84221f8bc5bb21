// Prints an answer on standard output.
#pragma once

#include "vantrex/values/json_value.h"

namespace next_steps_program {

// Prints `answer`, compact or indented, and a line feed. Throws requests::IoFailed and std::bad_alloc.
void print_answer(vantrex::values::JsonObject answer, bool pretty);

}  // namespace next_steps_program
