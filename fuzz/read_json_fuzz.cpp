// The JSON reader of the program. It reads any bytes or reports an error at a place inside them, and nothing
// is wrong with the text before that place. A value that was read is the same after writing and reading it
// again. Reading some fields of an object gives what reading all of it gives, or the same error.
#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "fuzz/support/check.h"
#include "requests/json_reader.h"
#include "vantrex/values/text_forms.h"

using next_steps_requests::JsonError;
using next_steps_requests::ObjectReading;
using next_steps_requests::Place;
using next_steps_requests::place_of;
using next_steps_requests::read_fields;
using next_steps_requests::read_json;
using next_steps_requests::read_json_object;
using vantrex::fuzz::check;
using vantrex::values::JsonField;
using vantrex::values::JsonObject;

namespace {

std::size_t offset_of(std::string_view text, Place place) {
  std::size_t line_start = 0;
  for (std::size_t line = 1; line < place.line; ++line) line_start = text.find('\n', line_start) + 1;
  return line_start + place.column - 1;
}

// Whether `text` is valid, or could become valid by more text.
bool is_right_so_far(std::string_view text) {
  try {
    read_json(text);
    return true;
  } catch (const JsonError& error) {
    return offset_of(text, error.place()) == text.size();
  }
}

constexpr std::array<std::string_view, 3> kKeys = {"a", "b", "é"};

void check_fields(std::string_view text) {
  ObjectReading some = read_fields(text, "it", kKeys);
  try {
    const JsonObject whole = read_json_object(text, "it");
    check(!some.error, "a valid text has no error");
    bool has_others = false;
    for (const JsonField& each : whole) {
      const auto* field = some.find(each.key.view());
      has_others |= field == nullptr;
      if (field == nullptr) continue;
      check(field->value == each.value, "a field has the last value of its key");
      check(text.substr(field->offset).starts_with('"'), "its offset is that of its key");
    }
    for (const std::string_view key : kKeys)
      check(some.find(key)->is_there() == whole.contains(key), "it is there if the object has it");
    check(some.other.is_there() == has_others, "there are others if the object has them");
    if (has_others) check(whole.contains(*some.other.value.string()), "one of them is named");
  } catch (const JsonError& error) {
    check(some.error && std::string_view(error.what()) == some.error->what(), "the error is the same");
    check(
        error.place().line == some.error->place().line && error.place().column == some.error->place().column,
        "and so is its place");
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view text(reinterpret_cast<const char*>(data), size);
  check_fields(text);
  try {
    const vantrex::values::JsonValue value = read_json(text);
    const std::string written = compact_text(value);
    check(read_json(written) == value, "what is written reads back as the same value");
    check(compact_size(value) == written.size(), "the size is that of the text");
  } catch (const JsonError& error) {
    const Place end = place_of(text, text.size());
    const Place place = error.place();
    check(place.line >= 1 && place.column >= 1, "places count from 1");
    check(place.line < end.line || (place.line == end.line && place.column <= end.column),
          "an error's place lies in the text");
    check(is_right_so_far(text.substr(0, offset_of(text, place))), "the first wrong byte is reported");
  }
  return 0;
}
