// Answers to a miss: a symbol or a path that the index does not hold.
//
// Each function marks the answer as not found, lists the nearest names in the index, and adds one step that
// uses the best of them, if the catalogue has a call for that. Finish the answer afterwards, like any other.
//
// Ownership: the answer is changed in place and returned. Threads: no state; do not use the same answer on
// two threads at once.
//
// Errors: an exception from the lookup, of any type, is logged as a warning and counts as no candidates; the
// cancellation of the thread passes through. Any other exception reaches the caller, and the answer may then
// hold some of the fields.
#pragma once

#include <string_view>

#include "vantrex/export.h"
#include "vantrex/tool_handlers/next_steps/catalogue.h"
#include "vantrex/values/json_value.h"

namespace vantrex::models {

class Repository;

}  // namespace vantrex::models

namespace vantrex::tool_handlers::next_steps {

/// Answers a symbol request. `wanted` is the name or fqn that matched nothing, any bytes. `action` is the
/// action that the step repeats on the best candidate, such as "callers". Sets "found", "did_you_mean"
/// (objects, best first) and "next_steps"; a field that `response` already holds keeps its position. The step
/// is a call of `catalogue`, borrowed for the call, or of the module's tables if it is null; when the
/// catalogue has no call for the miss, "next_steps" is removed. Returns `response`. Throws std::bad_alloc.
NEXT_STEPS_API values::JsonObject& suggest_symbols(values::JsonObject& response,
                                                   const models::Repository& repository,
                                                   std::string_view wanted, std::string_view action,
                                                   const Catalogue* catalogue = nullptr);

/// The same for a file request and a path. "did_you_mean" holds strings.
NEXT_STEPS_API values::JsonObject& suggest_paths(values::JsonObject& response,
                                                 const models::Repository& repository,
                                                 std::string_view wanted, std::string_view action,
                                                 const Catalogue* catalogue = nullptr);

}  // namespace vantrex::tool_handlers::next_steps
