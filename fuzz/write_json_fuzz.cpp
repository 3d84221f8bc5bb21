// The JSON writer. All texts equal those of the naive writer, and compact_size is the size of compact_text.
// A value that JSON can hold reads back as the same value.
#include <cstddef>
#include <cstdint>

#include "fuzz/support/byte_choices.h"
#include "fuzz/support/check.h"
#include "fuzz/support/naive.h"
#include "next_steps/print_answer.h"
#include "requests/json_reader.h"
#include "vantrex/values/text_forms.h"

using vantrex::fuzz::check;
using vantrex::fuzz::Domain;
using vantrex::fuzz::naive::json_text;
using vantrex::values::JsonValue;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  constexpr std::size_t kDepth = 5;
  const JsonValue value = vantrex::fuzz::byte_choices(data, size, Domain::any).value(kDepth);
  check(compact_text(value) == json_text(value), "the text is that of the naive writer");
  check(compact_size(value) == compact_text(value).size(), "the size is that of the text");
  check(canonical_text(value) == json_text(value, true), "the canonical text has its fields in order");

  const JsonValue json = vantrex::fuzz::byte_choices(data, size, Domain::json).value(kDepth);
  check(next_steps_requests::read_json(compact_text(json)) == json, "what is written reads back");
  check(next_steps_requests::read_json(next_steps_program::pretty_text(json)) == json, "indented, too");
  return 0;
}
