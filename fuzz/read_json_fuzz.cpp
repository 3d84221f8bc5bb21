// The JSON reader of the program. It reads any bytes or reports an error at a place inside them. A value that
// was read is the same after writing and reading it again.
#include <cstddef>
#include <cstdint>
#include <string_view>

#include "fuzz/support/check.h"
#include "next_steps/json_reader.h"
#include "vantrex/values/text_forms.h"

using next_steps_program::JsonError;
using next_steps_program::Place;
using next_steps_program::place_of;
using next_steps_program::read_json;
using vantrex::fuzz::check;

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
  }
  return 0;
}
