// The freshness block of an index: whether the index is current.
//
// Pure functions without state.
#pragma once

#include "vantrex/export.h"
#include "vantrex/values/json_value.h"

namespace vantrex::models {

class Repository;

}  // namespace vantrex::models

namespace vantrex::tool_handlers {

/// The freshness block of `repository`: null while the index is current, otherwise an object with the indexed
/// and the present revision. Throws what the repository throws, and std::bad_alloc.
NEXT_STEPS_API values::JsonValue freshness_block(const models::Repository& repository);

/// Sets the field "freshness" of `answer` to `block`. Does nothing if `block` is null. Throws std::bad_alloc.
NEXT_STEPS_API void add_freshness(values::JsonObject& answer, values::JsonValue block);

}  // namespace vantrex::tool_handlers
