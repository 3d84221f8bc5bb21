// The signals: steps that the content of an answer calls for.
//
// Without hits, the step is a search by meaning or a call of "explore"; with many callers or references, the
// blast radius; for a file without tests, the tests of a change.
//
// Pure functions. Throw only std::bad_alloc.
#pragma once

#include <array>
#include <optional>
#include <string_view>

#include "vantrex/tool_handlers/next_steps/answer_view.h"
#include "vantrex/tool_handlers/next_steps/catalogue.h"
#include "vantrex/values/json_value.h"

namespace vantrex::tool_handlers::next_steps {

// A signal reads `known`, an object of five fields, and returns its step or nothing:
//   "hits"   the number of hits, null without a count
//   "query"  the request's query if it is not empty, otherwise the answer's
//   "fqn"    likewise
//   "path"   the request's path
//   "what"   the action, a string
std::optional<values::JsonObject> _search_by_meaning(const values::JsonObject& known);
std::optional<values::JsonObject> _ask_explore(const values::JsonObject& known);
std::optional<values::JsonObject> _blast_radius(const values::JsonObject& known);
std::optional<values::JsonObject> _untested(const values::JsonObject& known);

// One row of the signals. Its key is a tool and an action joined by a colon.
struct SignalRow {
  std::string_view key;
  std::optional<values::JsonObject> (*signal)(const values::JsonObject& known);
};

inline constexpr std::array<SignalRow, 7> _SIGNALS = {{
    {"search:symbols", _search_by_meaning},
    {"search:code", _search_by_meaning},
    {"search:definition", _search_by_meaning},
    {"search:semantic", _ask_explore},
    {"symbol:callers", _blast_radius},
    {"symbol:references", _blast_radius},
    {"tests:for_file", _untested},
}};
static_assert(detail::has_unique_keys(_SIGNALS));

// The row of `tool` and `action`, or null.
const SignalRow* signal_row(std::string_view tool, std::optional<std::string_view> action) noexcept;

// The input of the signals for an answer to `action`.
values::JsonObject known_to_signals(const AnswerView& answer, std::optional<std::string_view> action);

// The signal steps of an answer: a list of at most one step.
values::JsonList _signals(const AnswerView& answer, std::string_view tool,
                          std::optional<std::string_view> action);

}  // namespace vantrex::tool_handlers::next_steps
