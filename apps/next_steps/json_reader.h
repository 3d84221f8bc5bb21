// Reads JSON text into values.
//
// The text must be one document in well-formed UTF-8, without NUL bytes, byte-order mark or
// lone surrogates. An integer is exact. A float is rounded to the nearest double; a number
// whose nearest double is infinite (from about 1.8e308) is rejected. A repeated key keeps its
// first position and its last value. Rejected are also texts of 2^32 bytes and lists and
// objects of more than 2^31 items. Depth is limited by memory only.
//
// Pure functions: any number of threads may call them.
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
};

// The place of the byte at `offset`, which may be the end of `text`.
Place place_of(std::string_view text, std::size_t offset);

// An error in a text, with the place of the first byte or token that is wrong.
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

// Returns the value that `text` holds. If the value is an object and `members` is not null,
// appends the object's fields to `members`, in the order of the text and with repetitions.
// Throws JsonError and std::bad_alloc.
values::JsonValue read_json(std::string_view text, std::vector<MemberOffset>* members = nullptr);

// The same for a text that must hold an object. `what` names the object in the error, for
// example "an answer".
values::JsonObject read_json_object(std::string_view text, std::string_view what,
                                    std::vector<MemberOffset>* members = nullptr);

// The kind of `value` for a message: "an object", "null", "a string".
std::string_view kind_name(const values::JsonValue& value);

}  // namespace next_steps_program
