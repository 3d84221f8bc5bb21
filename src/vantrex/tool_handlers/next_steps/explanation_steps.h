// What became of each step that an answer could have got.
//
// A pure function; it throws only std::bad_alloc and what _deduplicated throws.
#pragma once

#include <vector>

#include "vantrex/tool_handlers/next_steps/assembly.h"
#include "vantrex/tool_handlers/next_steps/explanation.h"
#include "vantrex/values/json_value.h"

namespace vantrex::tool_handlers::next_steps {

// The steps of `found` in their order, each with its verdict: the kept ones are
// those that `answer`, which has no "next_steps" yet, gets of them from a server that
// has `serves`. `rows` are the rows that signals and usual follow-ups came from, `bytes`
// those of `answer`.
std::vector<CandidateStep> judged_steps(const values::JsonObject& answer, const AnswerBytes& bytes,
                                        const Candidates& found, const TableRows& rows,
                                        const ServedTools* serves = nullptr);

}  // namespace vantrex::tool_handlers::next_steps
