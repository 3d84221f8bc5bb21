// The hint fields of an answer with their paths, for an explanation.
//
// Pure functions. Throw only std::bad_alloc.
#pragma once

#include <cstddef>
#include <vector>

#include "vantrex/tool_handlers/next_steps/explanation.h"
#include "vantrex/values/json_value.h"

namespace vantrex::tool_handlers::next_steps {

// The hint fields of an answer that are listed, and the number of the others.
struct ListedHints {
  std::vector<HintField> largest;  // the largest first; of equal ones, the first in the answer
  std::size_t others = 0;
};

// Lists at most `max` hint fields of `answer`. Builds no other paths: a path may be as long as the answer.
ListedHints largest_hints(const values::JsonObject& answer, std::size_t max);

}  // namespace vantrex::tool_handlers::next_steps
