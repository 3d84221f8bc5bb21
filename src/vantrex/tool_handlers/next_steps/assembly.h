// The choice of an answer's steps, and their place in it.
//
// The tool's own steps replace all others. Otherwise the signals come first, then the usual follow-ups,
// without repeats and at most MAX_STEPS of them. The hint budget applies in both cases.
//
// Threads: no state; do not use the same answer on two threads at once.
#pragma once

#include <cstddef>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>

#include "vantrex/tool_handlers/next_steps/budget.h"
#include "vantrex/tool_handlers/next_steps/finishing.h"
#include "vantrex/values/json_value.h"

namespace vantrex::tool_handlers::next_steps {

// Thrown for a step without a call: it is no object, or lacks the field "tool" or "args". what() names the
// position and the field.
class MalformedStep : public std::invalid_argument {
 public:
  // `field` is the missing field, or empty if the step is no object.
  MalformedStep(std::size_t position, std::string_view field);
};

// The call of `step` as text. Two steps make the same call if and only if their texts are equal. `position`
// is the step's position in its list, for the error. Throws MalformedStep and std::bad_alloc.
std::string call_text(const values::JsonValue& step, std::size_t position);

// `steps` without repeated calls. Of the steps with the same tool and the same arguments, in any order of
// fields, the first stays. Throws MalformedStep and std::bad_alloc.
values::JsonList _deduplicated(values::JsonList steps);

// The candidate steps of an answer. `signals` and `usual` are empty if there are own steps.
struct Candidates {
  values::JsonList own = {};
  values::JsonList signals = {};
  values::JsonList usual = {};
};

// The steps of an answer before the budget applies, and how many of them always stay.
struct Choice {
  values::JsonList steps;
  Keep keep;
};

// Whether the server has the call. A null `serves` has every call.
bool is_served(std::string_view tool, std::optional<std::string_view> action,
               const ServedTools* serves) noexcept;
// The same for a step that the module made.
bool is_served(const values::JsonValue& step, const ServedTools* serves) noexcept;

// Chooses from the candidates. Drops the signals and usual follow-ups that `serves` does not contain. Throws
// what _deduplicated throws.
Choice choose_steps(Candidates candidates, const ServedTools* serves);

// Prepares `response` for the choice of its steps: drops its null fields and adds the freshness block. Throws
// std::bad_alloc; `response` may then be changed in part.
void prepare(values::JsonObject& response, values::JsonValue freshness);

// The candidate steps of `response`. Removes its field "next_steps". The tool's name and `options.arguments`
// must not lie in `response`. Throws std::bad_alloc; the field may then be lost.
Candidates candidate_steps(values::JsonObject& response, std::string_view tool_name,
                           const FinishOptions& options);

// Gives `response` its steps: sets "next_steps" as its last field, or removes the field if there are no
// steps. Returns `response`. Does not use `options.freshness`. The preconditions and exceptions
// are those of candidate_steps.
values::JsonObject& _add_next_steps(values::JsonObject& response, std::string_view tool_name,
                                    const FinishOptions& options = {});

}  // namespace vantrex::tool_handlers::next_steps
