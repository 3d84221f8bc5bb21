// The hint fields of an answer with their paths, for an explanation.
#pragma once

#include "vantrex/tool_handlers/next_steps/explanation.h"
#include "vantrex/values/json_value.h"

namespace vantrex::tool_handlers::next_steps {

// Sets the hint fields of `answer` that are listed, the largest first and of equal ones the first in the
// answer, and the number of the others. Builds no other paths: a path may be as long as the answer. Throws
// std::bad_alloc.
void list_hint_fields(Explanation& explained, const values::JsonObject& answer);

}  // namespace vantrex::tool_handlers::next_steps
