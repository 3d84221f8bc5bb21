// Prints an answer on standard output.
#pragma once

#include <string>

#include "next_steps/names.h"
#include "vantrex/values/json_value.h"

namespace next_steps_program {

// Returns `value` as JSON text with two spaces per level, up to 100 levels. Empty lists and
// objects stay on one line. Does not recurse. Throws std::bad_alloc.
std::string pretty_text(const values::JsonValue& value);

// Prints `answer`, compact or indented, and a line feed. Throws requests::IoFailed and std::bad_alloc.
void print_answer(values::JsonObject answer, bool pretty);

}  // namespace next_steps_program
