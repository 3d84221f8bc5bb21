// What became of each step that an answer could have got.
//
// A pure function; it throws only std::bad_alloc and what _deduplicated throws.
#pragma once

#include <string_view>
#include <vector>

#include "vantrex/tool_handlers/next_steps/assembly.h"
#include "vantrex/tool_handlers/next_steps/explanation.h"
#include "vantrex/values/json_value.h"

namespace vantrex::tool_handlers::next_steps {

// The steps of `found` in their order, each with its verdict: the kept ones are
// those that `answer`, which has no "next_steps" yet, gets of them. The rows
// are the keys of the tables' rows that signals and usual follow-ups came from. `bytes`
// are those of `answer`.
std::vector<CandidateStep> judged_steps(const values::JsonObject& answer, const AnswerBytes& bytes,
                                        const Candidates& found, std::string_view signal_key,
                                        std::string_view usual_key);

}  // namespace vantrex::tool_handlers::next_steps
