// The indented JSON text of a value, for people to read.
#pragma once

#include <string>

#include "vantrex/values/json_value.h"

namespace next_steps_program {

// The compact form of `value` spread over lines, two spaces to a level (up
// to 100 levels). Empty lists and objects stay on their line. No recursion on
// depth. Throws std::bad_alloc.
std::string pretty_text(const vantrex::values::JsonValue& value);

}  // namespace next_steps_program
