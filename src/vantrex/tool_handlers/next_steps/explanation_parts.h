// The parts of an explanation that need more than the choice of the steps. Both throw std::bad_alloc.
#pragma once

#include <string_view>

#include "vantrex/tool_handlers/next_steps/answer_view.h"
#include "vantrex/tool_handlers/next_steps/explanation.h"
#include "vantrex/values/json_value.h"

namespace vantrex::tool_handlers::next_steps {

// Sets the rows that apply to `answer`, the calls and the signals that give no step, and remarks: a tool or
// an action that is unknown, a count that is ignored, hits that are not seen.
void explain_tables(Explanation& explained, const AnswerView& answer, std::string_view tool,
                    const FinishOptions& options);

// Sets the hint fields of `answer` that are listed, the largest first and of equal ones the first in the
// answer, and the number of the others. Builds no other paths: a path may be as long as the answer.
void list_hint_fields(Explanation& explained, const values::JsonObject& answer);

}  // namespace vantrex::tool_handlers::next_steps
