// Why the tables give an answer its steps, and no others.
#pragma once

#include <string_view>

#include "vantrex/tool_handlers/next_steps/answer_view.h"
#include "vantrex/tool_handlers/next_steps/explanation.h"

namespace vantrex::tool_handlers::next_steps {

// Sets the rows that apply to `answer`, the calls and the signals that give no step, and remarks: a tool or
// an action that is unknown, a count that is ignored, hits that are not seen. Throws std::bad_alloc.
void explain_tables(Explanation& explained, const AnswerView& answer, std::string_view tool,
                    const FinishOptions& options);

}  // namespace vantrex::tool_handlers::next_steps
