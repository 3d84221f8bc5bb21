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

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "requests/failures.h"
#include "requests/names.h"
#include "vantrex/values/json_value.h"

namespace next_steps_requests {

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
  JsonError(Place place, const std::string& message, bool concerns_encoding = false)
      : std::runtime_error(message), place_(place), concerns_encoding_(concerns_encoding) {}

  Place place() const noexcept { return place_; }
  // Whether it is ill-formed UTF-8 or a lone surrogate.
  bool concerns_encoding() const noexcept { return concerns_encoding_; }

 private:
  Place place_;
  bool concerns_encoding_;
};

// Returns the error as one of the input `source`, where the text begins at line `first_line`.
InputRejected in_source(const std::string& source, const JsonError& error, std::size_t first_line = 1);

// What becomes of ill-formed UTF-8 and of lone surrogates in texts.
enum class Encoding : std::uint8_t {
  strict,  // they are errors
  lossy,   // each maximal ill-formed piece and each lone surrogate is read as U+FFFD
};

// Returns the value that `text` holds. Throws JsonError and std::bad_alloc.
values::JsonValue read_json(std::string_view text);

// What becomes of a key that an object already has.
enum class RepeatedKeys : std::uint8_t {
  replace,  // it keeps its first position and gets its last value
  are_errors,
};

// The same for a text that must hold an object. `what` names the object in the error, for
// example "an answer".
values::JsonObject read_json_object(std::string_view text, std::string_view what,
                                    RepeatedKeys repeated = RepeatedKeys::replace);

// A field of an object.
struct Field {
  values::JsonValue value;
  std::size_t offset = std::string_view::npos;  // of its key in the text

  bool is_there() const noexcept { return offset != std::string_view::npos; }
};

// Borrowed keys. They must outlive each reading that is made with them.
using Keys = std::span<const std::string_view>;

// A text that should hold an object, as far as it could be read.
struct ObjectReading {
  Keys keys;
  std::vector<Field> fields;  // one for each key; after an error, those that end before it
  Field other;                // the first with another key; its value is that key
  std::optional<JsonError> error;

  // The field of the key; null if it is none of the keys.
  Field* find(std::string_view key) {
    const auto place = static_cast<std::size_t>(std::find(keys.begin(), keys.end(), key) - keys.begin());
    return place == keys.size() ? nullptr : &fields[place];
  }
};

// Reads the fields with `keys` of an object; of a repeated key the last field counts. Other fields are
// checked, too, except for their sizes, but not kept. `what` is as for read_json_object. Throws
// std::bad_alloc.
ObjectReading read_fields(std::string_view text, std::string_view what, Keys keys,
                          Encoding encoding = Encoding::strict);

// "must be a string or null, not a list". `or_null` may be empty.
std::string wrong_kind(values::Kind kind, std::string_view or_null, values::Kind found);

}  // namespace next_steps_requests
