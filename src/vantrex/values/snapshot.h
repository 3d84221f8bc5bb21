// Deep copies packed in one arena.
//
// Pure functions without state: any number of threads may call them, also on
// the same source.
#pragma once

#include "vantrex/values/json_value.h"

namespace vantrex::values {

enum class NullFields { keep, drop };

// A copy of `source` that shares nothing changeable with it. With
// NullFields::drop, fields whose value is null are left out at every depth;
// null items of lists stay. Takes one pass. Throws std::bad_alloc.
JsonValue snapshot(const JsonValue& source, NullFields null_fields);
JsonList snapshot(const JsonList& source, NullFields null_fields);
JsonObject snapshot(const JsonObject& source, NullFields null_fields);

}  // namespace vantrex::values
