// Answers to a miss: a symbol or a path that the index does not hold.
//
// Both mark the answer as not found, list the nearest names that the index
// does hold, and give one step that uses the best of them. The tool handler
// finishes the answer afterwards, like any other.
//
// Ownership: the answer is changed in place and returned. Threads: no state is
// kept; one answer must not be used by another thread meanwhile.
//
// A lookup that fails, with whatever it throws, costs one warning in the log
// and is then as if nothing were near. Everything else that is thrown reaches
// the caller, and the answer may by then hold some of the fields. The cancellation of
// the thread is no failure and goes on.
#pragma once

#include <string_view>

#include "vantrex/export.h"
#include "vantrex/models/repository.h"
#include "vantrex/values/json_value.h"

namespace vantrex::tool_handlers::next_steps {

// Answers a symbol request. `wanted` is the name or fqn that matched nothing,
// any bytes; `action` the one that the step repeats on the best candidate, such
// as "callers". Sets "found", "did_you_mean" (objects, best first) and
// "next_steps", each in its place when `response` holds it already, and returns
// `response`. Throws std::bad_alloc.
NEXT_STEPS_API values::JsonObject& suggest_symbols(values::JsonObject& response,
                                                   const models::Repository& repository,
                                                   std::string_view wanted, std::string_view action);

// The same for a file request and a path; "did_you_mean" holds strings.
NEXT_STEPS_API values::JsonObject& suggest_paths(values::JsonObject& response,
                                                 const models::Repository& repository,
                                                 std::string_view wanted, std::string_view action);

}  // namespace vantrex::tool_handlers::next_steps
