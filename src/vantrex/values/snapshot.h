// Deep copies packed in one arena.
//
// Pure functions without state: any number of threads may call them, also on
// the same source.
#pragma once

#include "vantrex/values/json_value.h"

namespace vantrex::values {

enum class NullFields { keep, drop };
enum class Measure { no, yes };

// A copy of `source` that shares nothing changeable with it. With
// NullFields::drop, fields whose value is null are left out at every depth;
// null items of lists stay. With Measure::yes every list and object of the copy
// remembers the size of its compact text for as long as it is not changed.
// Takes one pass. Throws std::bad_alloc.
JsonValue snapshot(const JsonValue& source, NullFields null_fields, Measure measure = Measure::no);
JsonList snapshot(const JsonList& source, NullFields null_fields, Measure measure = Measure::no);
JsonObject snapshot(const JsonObject& source, NullFields null_fields, Measure measure = Measure::no);

}  // namespace vantrex::values
