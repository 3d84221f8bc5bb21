// The output schema of a tool whose answers are finished.
#pragma once

#include "vantrex/values/json_value.h"

namespace next_steps_proxy {

// Returns a JSON Schema, in the terms of draft-07 to 2020-12, that each finished answer fits if the answer
// fits `schema`: null fields may be missing, and "next_steps" may be there. If `schema` refers to a part that
// has to go, any object fits. Linear time. Throws std::bad_alloc.
vantrex::values::JsonObject widened_schema(vantrex::values::JsonObject schema);

}  // namespace next_steps_proxy
