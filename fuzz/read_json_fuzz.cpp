// The JSON reader of the program. It reads any bytes or reports an error at a place inside them, and nothing
// is wrong with the text before that place. A value that was read is the same after writing and reading it
// again.
#include <cstddef>
#include <cstdint>
#include <string_view>

#include "fuzz/support/check.h"
#include "requests/json_reader.h"
#include "vantrex/values/text_forms.h"

using next_steps_requests::JsonError;
using next_steps_requests::Place;
using next_steps_requests::place_of;
using next_steps_requests::read_json;
using vantrex::fuzz::check;

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

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view text(reinterpret_cast<const char*>(data), size);
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
