// The choice of an answer's steps, and their place in it.
//
// The tool's own steps replace all others. Otherwise the signals come first, then the usual follow-ups,
// without repeats and at most MAX_STEPS of them. The hint budget applies in both cases.
//
// Threads: no state; do not use the same answer on two threads at once.
#pragma once

#include <optional>
#include <string_view>
#include <vector>

#include "vantrex/tool_handlers/next_steps/budget.h"
#include "vantrex/tool_handlers/next_steps/candidate.h"
#include "vantrex/tool_handlers/next_steps/finishing.h"
#include "vantrex/values/json_value.h"

namespace vantrex::tool_handlers::next_steps {

// The candidate steps of an answer, in order: own steps, or signals and then usual follow-ups.
using Candidates = std::vector<Candidate>;

// `steps` with the verdict `repeat` on each kept step that makes the same call as an earlier one: the same
// tool and the same arguments, in any order of fields. Throws std::bad_alloc.
Candidates _deduplicated(Candidates steps);

// Whether the server has the call. A null `serves` has every call.
bool is_served(std::string_view tool, std::optional<std::string_view> action,
               const ServedTools* serves) noexcept;
// The same for a step, which may be any value.
bool is_served(const values::JsonValue& step, const ServedTools* serves) noexcept;

// Decides on the signals and usual follow-ups among `candidates`: drops those that `serves` does not contain,
// repeats, and those over MAX_STEPS. Returns the number of kept candidates that the budget must not drop.
// Throws std::bad_alloc.
Keep choose_steps(Candidates& candidates, const ServedTools* serves);

// The steps of the kept candidates. Throws std::bad_alloc.
values::JsonList kept_steps(Candidates candidates);

// Prepares `response` for the choice of its steps: drops its null fields and adds the freshness block. Throws
// std::bad_alloc; `response` may then be changed in part.
void prepare(values::JsonObject& response, values::JsonValue freshness);

// Whether the steps of `response` come from the tables. They do not if it has own steps, or if it is a miss
// that is finished with `serves` or a catalogue: the tables would only repeat the missing name.
bool asks_tables(const values::JsonObject& response, const FinishOptions& options) noexcept;

// The candidate steps of `response`. Removes its field "next_steps". Such a miss keeps only own steps that
// are served. The tool's name and `options.arguments` must not lie in `response`. Throws std::bad_alloc; the
// field may then be lost.
Candidates candidate_steps(values::JsonObject& response, std::string_view tool_name,
                           const FinishOptions& options);

// Gives `response` its steps: sets "next_steps" as its last field, or removes the field if there are no
// steps. Returns `response`. Does not use `options.freshness`. The preconditions and exceptions
// are those of candidate_steps.
values::JsonObject& _add_next_steps(values::JsonObject& response, std::string_view tool_name,
                                    const FinishOptions& options = {});

}  // namespace vantrex::tool_handlers::next_steps
