// The usual follow-ups of an answer.
//
// A catalogue lists the calls that usually follow an answer. Here each call takes its arguments from the
// answer: the best hit's fqn, the first file's path, a component's name, the query, or the files of a change.
// A call without one of its arguments is left out.
//
// Pure functions. Throw only std::bad_alloc; a field of the wrong type counts as absent.
#pragma once

#include <optional>
#include <string_view>
#include <variant>

#include "vantrex/tool_handlers/next_steps/answer_view.h"
#include "vantrex/tool_handlers/next_steps/follow_ups.h"
#include "vantrex/tool_handlers/next_steps/rules.h"
#include "vantrex/values/json_value.h"

namespace vantrex::tool_handlers::next_steps {

// The value that a hint takes from the answer or the request, or null. The reference is valid as long as the
// answer and the request. `takes` is not `changed_files`, which _tests_scope handles.
const values::JsonValue& _taken(const AnswerView& answer, Takes takes);

// What an answer lacks for a call.
struct Lack {
  const Argument* argument;  // the first that has no value; null if 0 hits give no arguments at all
};

// The arguments of `call`, or what `answer` lacks for them. 0 hits do not matter here.
std::variant<values::JsonObject, Lack> call_arguments(const Call& call, const AnswerView& answer);

// The same for a usual follow-up: an answer with 0 hits has no argument that may come from a hit.
std::variant<values::JsonObject, Lack> follow_up_arguments(const Call& call, const AnswerView& answer);

// The usual follow-up steps of an answer, in the order of the catalogue.
values::JsonList _usual(const AnswerView& answer, std::string_view tool,
                        std::optional<std::string_view> action);

}  // namespace vantrex::tool_handlers::next_steps
