// Deep copies packed in one arena.
//
// Pure functions without state: any number of threads may call them, also on
// the same source.
#pragma once

#include "vantrex/values/json_value.h"
#include "vantrex/values/key_set.h"

namespace vantrex::values {

enum class NullFields { keep, drop };

// A copy of `source` that shares nothing changeable with it. With
// NullFields::drop, fields whose value is null are left out at every depth;
// null items of lists stay. Takes one pass. Throws std::bad_alloc.
JsonValue snapshot(const JsonValue& source, NullFields null_fields);
JsonList snapshot(const JsonList& source, NullFields null_fields);
JsonObject snapshot(const JsonObject& source, NullFields null_fields);

// The same, which measures on the way: compact_size() of the copy and of
// everything in it then takes constant time, as long as it lies in the arena.
JsonObject measured_snapshot(const JsonObject& source, NullFields null_fields, const KeySet& marked);

// Whether a field in `value` may have one of `keys`, at any depth: always, unless
// it is known from a measured_snapshot.
bool may_hold(const JsonValue& value, const KeySet& keys) noexcept;
bool may_hold(const JsonObject& object, const KeySet& keys) noexcept;

}  // namespace vantrex::values
