// The JSON text of a value, in two forms.
//
// The compact form is the text of an answer; its size is the size of the answer. The canonical form sorts the
// fields of every object by key; it serves to compare values.
//
// Both are UTF-8 without white space outside strings. Strings escape the quote, the backslash and U+0000 to
// U+001F. Floats have the shortest digits that read back as the same double; NaN, Infinity and -Infinity are
// bare words. A foreign value is the string of its text form.
//
// Pure functions: any number of threads may call them, also on one value. They throw std::bad_alloc.
// compact_size allocates only for values nested more than 24 levels deep.
#pragma once

#include <cstddef>
#include <string>

#include "vantrex/export.h"
#include "vantrex/values/json_value.h"

namespace vantrex::values {

/// The compact form of a value.
NEXT_STEPS_API std::string compact_text(const JsonValue& value);
/// The compact form of a list.
NEXT_STEPS_API std::string compact_text(const JsonList& list);
/// The compact form of an object.
NEXT_STEPS_API std::string compact_text(const JsonObject& object);

/// The canonical form: fields sorted by the bytes of their keys. Sorts its own copy of the value;
/// a value that is moved is not copied.
NEXT_STEPS_API std::string canonical_text(JsonValue value);

/// The size of the compact form in bytes. The canonical form has the same size.
NEXT_STEPS_API std::size_t compact_size(const JsonValue& value);
/// The same of a list.
NEXT_STEPS_API std::size_t compact_size(const JsonList& list);
/// The same of an object.
NEXT_STEPS_API std::size_t compact_size(const JsonObject& object);

}  // namespace vantrex::values
