// What in an answer looks like a mistake of its tool's author.
//
// Pure functions; they throw only std::bad_alloc.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "vantrex/tool_handlers/next_steps/answer_view.h"
#include "vantrex/tool_handlers/next_steps/explanation.h"
#include "vantrex/tool_handlers/next_steps/served_tools.h"
#include "vantrex/values/json_value.h"

namespace vantrex::tool_handlers::next_steps {

// The remarks on the field "next_steps" as the tool gave it, null when it gave none:
// it is no list, or its entries are no steps.
std::vector<std::string> remarks_on_own_steps(const values::JsonValue& own);

// The remarks on an answer whose steps come from the tables: neither they nor `serves`
// know the tool, or a hint of `absent` looked for hits where there is no hit list.
std::vector<std::string> remarks_on_tables(const AnswerView& answer, std::string_view tool,
                                           const ServedTools* serves, const std::vector<AbsentHint>& absent);

}  // namespace vantrex::tool_handlers::next_steps
