// Dropping the fields that say nothing.
#pragma once

#include "vantrex/values/json_value.h"

namespace vantrex::values {

// Removes the object fields in `value` whose value is null, at every depth, in
// place. Null items of lists stay, and so do objects that become empty. What stays
// below `value` keeps its memory. Takes one pass. Throws std::bad_alloc, only for
// values nested more than 24 levels deep, and may then have removed some.
void drop_null_fields(JsonValue& value);
void drop_null_fields(JsonObject& object);

}  // namespace vantrex::values
