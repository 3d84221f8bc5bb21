// The usual follow-ups of an answer.
//
// The catalogue lists the calls that usually follow an answer. Here each call takes its argument from the
// answer: the best hit's fqn, the first file's path, a component's name, the query, or the files of a change.
// A hint without its argument is left out.
//
// Pure functions. Throw only std::bad_alloc; a field of the wrong type counts as absent.
#pragma once

#include <cstdint>
#include <optional>
#include <string_view>
#include <variant>

#include "vantrex/tool_handlers/next_steps/answer_view.h"
#include "vantrex/tool_handlers/next_steps/catalogue.h"
#include "vantrex/values/json_value.h"

namespace vantrex::tool_handlers::next_steps {

// The value that a hint takes from the answer or the request, or null. The reference is valid as long as the
// answer and the request. `takes` is not `changed_files`, which _tests_scope handles.
const values::JsonValue& _taken(const AnswerView& answer, Takes takes);

// The row of `tool` and `action`, otherwise the row of `tool`, otherwise null.
const FollowUps* usual_row(std::string_view tool, std::optional<std::string_view> action) noexcept;

// What an answer lacks for the step of a hint.
enum class Lack : std::uint8_t {
  hits,      // it has 0 hits, so it gives no argument
  argument,  // neither it nor the request has the argument
  scope,     // it has no files and no base branch
};

// The arguments of the step of `hint`, or what `answer` lacks for it.
std::variant<values::JsonObject, Lack> hint_arguments(const Hint& hint, const AnswerView& answer);

// The usual follow-up steps of an answer, in the order of the catalogue.
values::JsonList _usual(const AnswerView& answer, std::string_view tool,
                        std::optional<std::string_view> action);

}  // namespace vantrex::tool_handlers::next_steps
