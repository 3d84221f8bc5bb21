// Remarks on an answer: likely mistakes of its tool's author.
//
// Pure functions. Throw only std::bad_alloc.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "vantrex/tool_handlers/next_steps/answer_view.h"
#include "vantrex/tool_handlers/next_steps/explanation.h"
#include "vantrex/tool_handlers/next_steps/served_tools.h"
#include "vantrex/values/json_value.h"

namespace vantrex::tool_handlers::next_steps {

// Remarks on the field "next_steps" that the tool gave, null if it gave none: it is no list, or its entries
// are no steps.
std::vector<std::string> remarks_on_own_steps(const values::JsonValue& own);

// Remarks on an answer whose steps come from the tables: neither the tables nor `serves` know the tool, or a
// hint of `absent` takes its argument from hits and the answer has no hit list.
std::vector<std::string> remarks_on_tables(const AnswerView& answer, std::string_view tool,
                                           const ServedTools* serves, const std::vector<AbsentHint>& absent);

}  // namespace vantrex::tool_handlers::next_steps
