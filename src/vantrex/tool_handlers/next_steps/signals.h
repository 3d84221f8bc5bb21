// The signals: steps that the content of an answer calls for.
//
// Without hits, the step is a search by meaning or a call of "explore"; with many callers or references, the
// blast radius; for a file without tests, the tests of a change.
//
// Constant data and pure functions. Throw only std::bad_alloc.
#pragma once

#include <array>
#include <optional>
#include <string_view>

#include "vantrex/tool_handlers/next_steps/answer_view.h"
#include "vantrex/tool_handlers/next_steps/limits.h"
#include "vantrex/tool_handlers/next_steps/rules.h"
#include "vantrex/values/json_value.h"

namespace vantrex::tool_handlers::next_steps {

namespace detail {

inline constexpr Argument kAskedQuery{"query", ArgumentKind::asked_query};
inline constexpr Argument kAskedFqn{"fqn", ArgumentKind::asked_fqn};
inline constexpr Argument kAskedFile{"changed_files", ArgumentKind::asked_path, nullptr, true};

}  // namespace detail

inline constexpr Signal _search_by_meaning{{.hits = 0},
                                           {.tool = "search",
                                            .reason = "No hits: search by meaning",
                                            .action = values::TextLiteral("semantic"),
                                            .takes = {&detail::kAskedQuery, 1}}};
inline constexpr Signal _ask_explore{
    {.hits = 0},
    {.tool = "explore", .reason = "No close match: ask explore", .takes = {&detail::kAskedQuery, 1}}};
inline constexpr Signal _blast_radius{{.hits = FAN_IN_FOR_IMPACT, .or_more = true},
                                      {.tool = "quality",
                                       .reason = "{hits} {action}: check the blast radius",
                                       .action = values::TextLiteral("impact"),
                                       .takes = {&detail::kAskedFqn, 1}}};
inline constexpr Signal _untested{{.hits = 0},
                                  {.tool = "tests",
                                   .reason = "No test covers it: tests for a change of it",
                                   .action = values::TextLiteral("recommended"),
                                   .takes = {&detail::kAskedFile, 1}}};

inline constexpr std::array<SignalRow, 7> _SIGNALS = {{
    {"search:symbols", &_search_by_meaning},
    {"search:code", &_search_by_meaning},
    {"search:definition", &_search_by_meaning},
    {"search:semantic", &_ask_explore},
    {"symbol:callers", &_blast_radius},
    {"symbol:references", &_blast_radius},
    {"tests:for_file", &_untested},
}};

// The signal steps of an answer: a list of at most one step.
values::JsonList _signals(const AnswerView& answer, std::string_view tool,
                          std::optional<std::string_view> action);

}  // namespace vantrex::tool_handlers::next_steps
