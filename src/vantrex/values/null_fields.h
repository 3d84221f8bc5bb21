// Removes fields whose value is null.
#pragma once

#include "vantrex/values/json_value.h"

namespace vantrex::values {

// Removes the null fields of all objects in `value`, at any depth, in place. Null items of lists stay, and so
// do objects that become empty. Allocates only for values nested more than 24 levels deep; when that throws
// std::bad_alloc, some fields may be removed already.
void drop_null_fields(JsonValue& value);
void drop_null_fields(JsonObject& object);

}  // namespace vantrex::values
