// Reading JSON text into values.
//
// Stricter than the usual reader, so that nothing is changed or lost on the
// way: the text must be well-formed UTF-8 without NUL bytes, byte-order mark or
// lone surrogates, and hold one document and nothing after it. Integers survive
// exactly as long as they fit the range of a double (308 digits), floats are
// the nearest double. Of a repeated key the last value stands at the first
// place. Any nesting depth that memory holds is read.
//
// Pure functions without state: any number of threads may call them.
#pragma once

#include <cstddef>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "vantrex/values/json_value.h"

namespace next_steps_program {

namespace values = vantrex::values;

// A place in a text. Lines and columns count from 1, columns in bytes.
struct Place {
  std::size_t line = 1;
  std::size_t column = 1;

  friend bool operator==(const Place&, const Place&) = default;
};

// The place of the byte at `offset`, which may be the end of `text`.
Place place_of(std::string_view text, std::size_t offset);

// A text that is not what it should be, and the place of the first byte or
// token that makes it so.
class JsonError : public std::runtime_error {
 public:
  JsonError(Place place, const std::string& message) : std::runtime_error(message), place_(place) {}

  Place place() const noexcept { return place_; }

 private:
  Place place_;
};

// A field of the outermost object, and the offset of its key in the text.
struct MemberOffset {
  values::Text key;
  std::size_t offset;
};

// The value that `text` holds. When `members` is given, the fields of an
// outermost object are appended to it in the order of the text, repeated ones
// included. Throws JsonError and std::bad_alloc.
values::JsonValue read_json(std::string_view text, std::vector<MemberOffset>* members = nullptr);

// The same for a text that must hold an object. `what` names it in the error:
// "the answer".
values::JsonObject read_json_object(std::string_view text, std::string_view what,
                                    std::vector<MemberOffset>* members = nullptr);

// "an object", "null", "a string": what `value` is, for a message.
std::string_view kind_name(const values::JsonValue& value);

}  // namespace next_steps_program
