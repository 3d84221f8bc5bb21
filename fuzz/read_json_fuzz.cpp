// The JSON reader of the program. It reads any bytes or reports an error at a place inside them, and nothing
// is wrong with the text before that place. A value that was read is the same after writing and reading it
// again. Picking fields of an object gives what reading all of it gives, or the same error.
#include <algorithm>
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
using next_steps_requests::pick_fields;
using next_steps_requests::PickedField;
using next_steps_requests::Place;
using next_steps_requests::place_of;
using next_steps_requests::read_json;
using next_steps_requests::read_members;
using vantrex::fuzz::check;
using vantrex::values::JsonValue;
using vantrex::values::Kind;

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

constexpr std::array<std::string_view, 3> kPicked = {"a", "b", "é"};

void check_picked(const PickedField& field, std::string_view key, const ObjectReading& whole) {
  std::size_t offset = std::string_view::npos;
  for (const auto& member : whole.offsets) offset = member.key.view() == key ? member.offset : offset;
  check(field.offset == offset, "a picked field is the last one of its key");
  const JsonValue& value = whole.object[key];
  check(field.kind == value.kind(), "its kind is that of the value");
  if (value.string()) check(field.text == *value.string(), "its text is the string");
  if (field.kind == Kind::integer) check(read_json(field.text) == value, "its text has the digits");
}

void check_picking(std::string_view text) {
  const ObjectReading whole = read_members(text, "it");
  std::array<PickedField, kPicked.size()> fields;
  std::string memory;
  try {
    const PickedField other = pick_fields(text, "it", kPicked, fields, memory);
    check(!whole.error, "picking finds the errors of the whole text");
    for (std::size_t at = 0; at < kPicked.size(); ++at) check_picked(fields[at], kPicked[at], whole);
    const auto first = std::find_if(whole.offsets.begin(), whole.offsets.end(), [](const auto& member) {
      return std::find(kPicked.begin(), kPicked.end(), member.key.view()) == kPicked.end();
    });
    check(other.is_there() == (first != whole.offsets.end()), "picking tells whether there are others");
    if (other.is_there())
      check(other.text == first->key.view() && other.offset == first->offset, "it is the first");
  } catch (const JsonError& error) {
    check(whole.error && std::string_view(error.what()) == whole.error->what(), "the error is the same");
    check(error.place().line == whole.error->place().line &&
              error.place().column == whole.error->place().column,
          "and so is its place");
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view text(reinterpret_cast<const char*>(data), size);
  check_picking(text);
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
