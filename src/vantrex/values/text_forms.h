// The two JSON text forms of a value.
//
// The compact form is what an answer is sent as, and its size is the only
// measure of an answer. The canonical form, with the fields of every object
// sorted by key, only tells whether two values say the same.
//
// Both are UTF-8 without white space outside strings. Strings escape the quote,
// the backslash and what is below U+0020, nothing else; floats have the
// shortest digits that read back the same, NaN, Infinity and -Infinity are bare
// words; a foreign value is the string of its text form.
//
// Pure functions without state: any number of threads may call them, also on
// the same value. They throw std::bad_alloc; the size allocates only for values
// nested more than 24 levels deep.
#pragma once

#include <cstddef>
#include <limits>
#include <string>

#include "vantrex/export.h"
#include "vantrex/values/json_value.h"

namespace vantrex::values {

// The compact form: fields in the order of the object.
NEXT_STEPS_API std::string compact_text(const JsonValue& value);
NEXT_STEPS_API std::string compact_text(const JsonObject& object);

// The canonical form: fields in the order of their keys' bytes.
NEXT_STEPS_API std::string canonical_text(const JsonValue& value);

// The bytes of the compact form; the canonical form has the same length.
NEXT_STEPS_API std::size_t compact_size(const JsonValue& value);
// Counts as far as `enough`: returns the size when it is less, else any number
// from `enough` to the size.
NEXT_STEPS_API std::size_t compact_size(const JsonObject& object,
                                        std::size_t enough = std::numeric_limits<std::size_t>::max());

}  // namespace vantrex::values
