// The verdicts on the candidate steps of an answer.
//
// A pure function. Throws only std::bad_alloc and what _deduplicated throws.
#pragma once

#include <vector>

#include "vantrex/tool_handlers/next_steps/assembly.h"
#include "vantrex/tool_handlers/next_steps/explanation.h"
#include "vantrex/values/json_value.h"

namespace vantrex::tool_handlers::next_steps {

// The steps of `found` in order, each with its verdict. The kept ones are those that `answer` gets from a
// server with `serves`. `answer` has no "next_steps" yet; `bytes` are its sizes. `rows` are the rows of the
// signals and usual follow-ups.
std::vector<CandidateStep> judged_steps(const values::JsonObject& answer, const AnswerBytes& bytes,
                                        const Candidates& found, const TableRows& rows,
                                        const ServedTools* serves = nullptr);

}  // namespace vantrex::tool_handlers::next_steps
