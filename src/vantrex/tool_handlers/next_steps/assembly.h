// Which follow-up steps an answer carries, and their place in it.
//
// Steps that the tool gave for its own answer take the place of all others.
// Without any, the signals that the answer calls for come first, then the usual
// follow-ups, without repeats and at most MAX_STEPS of them. Either way the
// hint budget has the last word.
//
// Threads: no state is kept; one answer must not be used by another thread
// while it gets its steps.
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

// Thrown for an entry of a list of steps that cannot be told from others: it is
// no object, or lacks the field "tool" or "args". what() says which.
class MalformedStep : public std::invalid_argument {
 public:
  // `field` is the one that is missing, or empty when the entry is no object.
  MalformedStep(std::size_t position, std::string_view field);
};

// The call that `step` makes, as text: two steps make the same call when their texts
// are equal. `position` is the step's in its list, for the error. Throws
// MalformedStep and std::bad_alloc.
std::string call_text(const values::JsonValue& step, std::size_t position);

// `steps` without repeats of the same call: of the steps that name the same
// tool and the same arguments, in whatever order, the first stays. Throws
// MalformedStep and std::bad_alloc.
values::JsonList _deduplicated(values::JsonList steps);

// The steps that an answer may get: those that its tool gave, or, when there are
// none, those of the module.
struct Candidates {
  values::JsonList own = {};
  values::JsonList signals = {};
  values::JsonList usual = {};
};

// The steps of an answer before the budget, and how many of them it must keep.
struct Choice {
  values::JsonList steps;
  Keep keep;
};

// Whether a server that has `serves` has the call; null has every call. `step` is one
// of the module's own.
bool is_served(std::string_view tool, std::optional<std::string_view> action,
               const ServedTools* serves) noexcept;
bool is_served(const values::JsonValue& step, const ServedTools* serves) noexcept;

// The choice from the candidates, of which those of the tables must be served. Throws
// as _deduplicated.
Choice choose_steps(Candidates candidates, const ServedTools* serves);

// Does to `response` what comes before the choice of its steps: drops its null
// fields and adds the freshness block. Throws std::bad_alloc, and then some of it
// may be done.
void prepare(values::JsonObject& response, values::JsonValue freshness);

// The steps that `response` may get. Takes its field "next_steps" out. The tool, the
// action and the arguments must not lie in `response`. Throws std::bad_alloc, and
// then `response` may have lost the field.
Candidates candidate_steps(values::JsonObject& response, std::string_view tool_name,
                           const FinishOptions& options);

// Replaces the field "next_steps" of `response` by the steps it is to carry, as
// its last field, or removes it when there are none. Returns `response`. The
// freshness block is not used. Otherwise as candidate_steps.
values::JsonObject& _add_next_steps(values::JsonObject& response, std::string_view tool_name,
                                    const FinishOptions& options = {});

}  // namespace vantrex::tool_handlers::next_steps
