// The index's freshness block: what an answer says about how current the index
// is that it came from.
//
// Pure functions without state: any number of threads may call them.
#pragma once

#include "vantrex/export.h"
#include "vantrex/models/repository.h"
#include "vantrex/values/json_value.h"

namespace vantrex::tool_handlers {

// The freshness block of `repository`: null while the index is current, else an
// object that says so and names the revision that was indexed and the one the
// tree has now. Throws what the repository throws, and std::bad_alloc.
NEXT_STEPS_API values::JsonValue freshness_block(const models::Repository& repository);

// Sets the field "freshness" of `answer` to `block`; does nothing for null.
// Throws std::bad_alloc.
NEXT_STEPS_API void add_freshness(values::JsonObject& answer, values::JsonValue block);

}  // namespace vantrex::tool_handlers
