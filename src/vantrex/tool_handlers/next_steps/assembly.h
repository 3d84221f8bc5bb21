// The choice of an answer's steps, and their place in it.
//
// The tool's own steps replace all others. Otherwise the signals come first, then the usual follow-ups,
// without repeats and at most MAX_STEPS of them. The hint budget applies in both cases.
//
// Threads: no state; do not use the same answer on two threads at once.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

#include "vantrex/tool_handlers/next_steps/budget.h"
#include "vantrex/tool_handlers/next_steps/candidate.h"
#include "vantrex/tool_handlers/next_steps/finishing.h"
#include "vantrex/values/json_value.h"

namespace vantrex::tool_handlers::next_steps {

// The decision on each candidate step.
using Decisions = std::vector<Decision>;

// `steps`, made by step(), without repeated calls. Of the steps with the same tool and the same arguments, in
// any order of fields, the first stays. Throws std::bad_alloc.
values::JsonList _deduplicated(values::JsonList steps);

// Whether the server has the call. A null `serves` has every call.
bool is_served(std::string_view tool, std::optional<std::string_view> action,
               const ServedTools* serves) noexcept;
// The same for a step, which may be any value.
bool is_served(const values::JsonValue& step, const ServedTools* serves) noexcept;

// Who gives the candidate steps: the tables, the tool, or the answer to a miss, whose steps must be served.
enum class Giver : std::uint8_t { tables, tool, miss };

// The candidate steps of an answer.
struct Candidates {
  values::JsonList steps;   // signals first
  std::size_t signals = 0;  // the number of signals
  Giver giver = Giver::tables;
};

// The steps of an answer before the budget applies, how many of them always stay, and the decision on each
// candidate.
struct Choice {
  values::JsonList steps;
  Keep keep;
  Decisions decisions;
};

// Chooses from the candidates. Drops those that `serves` does not contain and, of those from the tables,
// repeats and what is over MAX_STEPS. Throws std::bad_alloc.
Choice choose_steps(Candidates candidates, const ServedTools* serves);

// Prepares `response` for the choice of its steps: drops its null fields and adds the freshness block. Throws
// std::bad_alloc; `response` may then be changed in part.
void prepare(values::JsonObject& response, values::JsonValue freshness);

// The candidate steps of `response`. Removes its field "next_steps". The tables are asked if there are no own
// steps, except for a miss when it is known what the server has: they would only repeat the missing name. The
// tool's name and `options.arguments` must not lie in `response`. Throws std::bad_alloc; the field may then
// be lost.
Candidates candidate_steps(values::JsonObject& response, std::string_view tool_name,
                           const FinishOptions& options);

// Gives `response` its steps: sets "next_steps" as its last field, or removes the field if there are no
// steps. Returns `response`. Does not use `options.freshness`. The preconditions and exceptions are those of
// candidate_steps.
values::JsonObject& _add_next_steps(values::JsonObject& response, std::string_view tool_name,
                                    const FinishOptions& options = {});

}  // namespace vantrex::tool_handlers::next_steps
