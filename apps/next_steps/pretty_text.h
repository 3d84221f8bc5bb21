// Formats a value as indented JSON text.
#pragma once

#include <string>

#include "vantrex/values/json_value.h"

namespace next_steps_program {

// Returns `value` as JSON text with two spaces per level, up to 100 levels. Empty lists and
// objects stay on one line. Does not recurse. Throws std::bad_alloc.
std::string pretty_text(const vantrex::values::JsonValue& value);

}  // namespace next_steps_program
