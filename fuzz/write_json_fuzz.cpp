// The writer: the size is that of the text, text that JSON can hold reads back
// as the same value, and canonical texts are the same exactly when only the
// order of fields differs.
#include <cstddef>
#include <cstdint>
#include <utility>
#include <vector>

#include "fuzz/support/byte_choices.h"
#include "fuzz/support/check.h"
#include "next_steps/json_reader.h"
#include "next_steps/pretty_text.h"
#include "vantrex/values/text_forms.h"

using vantrex::fuzz::check;
using vantrex::fuzz::Domain;
using vantrex::values::JsonList;
using vantrex::values::JsonObject;
using vantrex::values::JsonValue;

namespace {

// `value` with the fields of its objects in the opposite order. Recurses, as
// the values of the generator are shallow.
JsonValue mirrored(const JsonValue& value) {
  if (const JsonList* list = value.list()) {
    JsonList copy;
    for (const JsonValue& item : *list) copy.push_back(mirrored(item));
    return copy;
  }
  if (const JsonObject* object = value.object()) {
    JsonObject copy;
    for (const auto* field = object->end(); field != object->begin();) {
      --field;
      copy.set(field->key, mirrored(field->value));
    }
    return copy;
  }
  return value;
}

// The same with the fields of every object by key.
JsonValue ordered(const JsonValue& value) {
  return next_steps_program::read_json(canonical_text(value));
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  constexpr std::size_t kDepth = 5;
  auto any = vantrex::fuzz::byte_choices(data, size, Domain::any);
  const JsonValue anything = any.value(kDepth);
  check(compact_size(anything) == compact_text(anything).size(), "the size is that of the text");

  auto json = vantrex::fuzz::byte_choices(data, size, Domain::json);
  const JsonValue value = json.value(kDepth);
  const JsonValue other = json.value(kDepth);
  check(next_steps_program::read_json(compact_text(value)) == value, "what is written reads back");
  check(next_steps_program::read_json(next_steps_program::pretty_text(value)) == value, "indented, too");
  check(canonical_text(mirrored(value)) == canonical_text(value), "the order of fields does not matter");
  check((canonical_text(value) == canonical_text(other)) == (ordered(value) == ordered(other)),
        "nothing but the order of fields is left out of account");
  return 0;
}
