// What an answer lacks for its steps, and likely mistakes of its tool's author, as sentences.
//
// Pure functions. Throw only std::bad_alloc.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "vantrex/tool_handlers/next_steps/answer_view.h"
#include "vantrex/tool_handlers/next_steps/finishing.h"
#include "vantrex/tool_handlers/next_steps/usual.h"
#include "vantrex/values/json_value.h"

namespace vantrex::tool_handlers::next_steps {

// What `answer` lacks: "no hits", "no fqn in any hit", "no files and no base branch".
std::string lack_text(const AnswerView& answer, const Lack& lack);

// Why the number of hits keeps a signal silent: "12 hits, not 0", "7 hits, 8 are needed". Empty if it does
// not.
std::string lacking_hits(const AnswerView& answer, const HitCondition& condition);

using Remarks = std::vector<std::string>;

// Remarks on an answer that has steps of its own, or whose "next_steps" is no list.
void append_remarks_on_own_steps(Remarks& remarks, const values::JsonObject& answer,
                                 const FinishOptions& options);

// Remarks on an answer whose steps come from the tables: a tool, an action or a served call that is unknown,
// and counts and hits that are not seen.
void append_remarks_on_tables(Remarks& remarks, const AnswerView& answer, std::string_view tool,
                              const FinishOptions& options);

}  // namespace vantrex::tool_handlers::next_steps
