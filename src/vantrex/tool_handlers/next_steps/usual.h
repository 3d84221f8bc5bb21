// The usual follow-ups of an answer.
//
// The catalogue says which calls usually follow an answer of a tool and action;
// here each gets its argument from the answer: the best hit's fqn, the first
// file's path, a component's name, the query, or the files of a change. A hint
// that the answer has nothing to give is left out.
//
// Pure functions: they change nothing they are given and may run on any thread.
// They throw only std::bad_alloc; a field of the wrong type counts as absent.
#pragma once

#include <cstdint>
#include <optional>
#include <string_view>
#include <variant>

#include "vantrex/tool_handlers/next_steps/answer_view.h"
#include "vantrex/tool_handlers/next_steps/catalogue.h"
#include "vantrex/values/json_value.h"

namespace vantrex::tool_handlers::next_steps {

// The value that a hint takes from the answer or the request, or null when there is
// none. `takes` is not `changed_files`: that is for _tests_scope.
values::JsonValue _taken(const values::JsonObject& response, Takes takes,
                         const values::JsonObject& arguments);

// The row of the catalogue for `tool` and `action`: that of both joined, else
// that of the tool alone, else null.
const FollowUps* usual_row(std::string_view tool, std::optional<std::string_view> action) noexcept;

// What an answer lacks to give the step of a hint.
enum class Lack : std::uint8_t {
  hits,      // it counts 0 hits, so nothing is taken from it
  argument,  // neither it nor the request has the argument that the hint takes
  scope,     // it names no files and no branch base
};

// The arguments of the step that `hint` makes of `answer`, or what it lacks.
std::variant<values::JsonObject, Lack> hint_arguments(const Hint& hint, const AnswerView& answer);

// The usual follow-up steps of an answer, in the order of the catalogue.
values::JsonList _usual(const values::JsonObject& response, std::string_view tool,
                        std::optional<std::string_view> action, const values::JsonObject& arguments);
values::JsonList usual_steps(const AnswerView& answer, std::string_view tool,
                             std::optional<std::string_view> action);

}  // namespace vantrex::tool_handlers::next_steps
