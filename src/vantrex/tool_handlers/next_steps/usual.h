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

#include <array>
#include <cstdint>
#include <optional>
#include <string_view>
#include <variant>

#include "vantrex/tool_handlers/next_steps/catalogue.h"
#include "vantrex/values/json_value.h"

namespace vantrex::tool_handlers::next_steps {

// The fields of an answer that hold hits, in the order in which they are
// searched.
inline constexpr std::array<std::string_view, 10> _HIT_LISTS = {
    "symbols",    "results",      "matches", "definitions", "callers",
    "references", "dead_symbols", "files",   "tests",       "components"};

// The number of hits that `response` says it has, or nothing when it counts
// none: a stated count first, else the length of the first hit list.
std::optional<values::Integer> _hit_count(const values::JsonObject& response);

// Whether the hit `item` is a code symbol.
bool _is_code_hit(const values::JsonObject& item) noexcept;

// The value that a hint takes from the answer or the request, or null when
// there is none. Of the kinds of argument all but `changed_files`, which
// _tests_scope answers.
values::JsonValue _taken(const values::JsonObject& response, Takes takes,
                         const values::JsonObject& arguments);

// The row of the catalogue for `tool` and `action`: that of both joined, else
// that of the tool alone, else null.
const FollowUps* usual_row(std::string_view tool, std::optional<std::string_view> action) noexcept;

// Whether `response` says that it has 0 hits. One that counts none does not.
bool has_no_hits(const values::JsonObject& response);

// What an answer lacks to give the step of a hint.
enum class Lack : std::uint8_t {
  hits,      // it counts 0 hits, so nothing is taken from it
  argument,  // neither it nor the request has the argument that the hint takes
  scope,     // it names no files and no branch base
};

// The arguments of the step that `hint` makes of `response`, or what it lacks.
// `no_hits` is has_no_hits(response).
std::variant<values::JsonObject, Lack> hint_arguments(const Hint& hint, const values::JsonObject& response,
                                                      const values::JsonObject& arguments, bool no_hits);

// The usual follow-up steps of `response`, in the order of the catalogue.
values::JsonList _usual(const values::JsonObject& response, std::string_view tool,
                        std::optional<std::string_view> action, const values::JsonObject& arguments);

}  // namespace vantrex::tool_handlers::next_steps
