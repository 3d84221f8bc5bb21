// The JSON writer. compact_size is the size of compact_text. A value that JSON can hold reads back as the
// same value. Two canonical texts are equal if and only if the values differ only in the order of fields.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <vector>

#include "fuzz/support/byte_choices.h"
#include "fuzz/support/check.h"
#include "next_steps/json_reader.h"
#include "next_steps/pretty_text.h"
#include "vantrex/values/text_forms.h"

using vantrex::fuzz::check;
using vantrex::fuzz::Domain;
using vantrex::values::JsonField;
using vantrex::values::JsonList;
using vantrex::values::JsonObject;
using vantrex::values::JsonValue;

namespace {

enum class Order : std::uint8_t { mirrored, by_key };

// `value` with the fields of its objects in another order. Recursive: random values are shallow.
JsonValue reordered(const JsonValue& value, Order order) {
  if (const JsonList* list = value.list()) {
    JsonList copy;
    for (const JsonValue& item : *list) copy.push_back(reordered(item, order));
    return copy;
  }
  if (const JsonObject* object = value.object()) {
    std::vector<JsonField> fields(object->begin(), object->end());
    std::reverse(fields.begin(), fields.end());
    if (order == Order::by_key) {
      std::sort(fields.begin(), fields.end(), [](const auto& a, const auto& b) { return a.key < b.key; });
    }
    JsonObject copy;
    for (const JsonField& field : fields) copy.set(field.key, reordered(field.value, order));
    return copy;
  }
  return value;
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
  check(canonical_text(reordered(value, Order::mirrored)) == canonical_text(value),
        "the order of fields does not matter");
  check((canonical_text(value) == canonical_text(other)) ==
            (reordered(value, Order::by_key) == reordered(other, Order::by_key)),
        "nothing but the order of fields is left out of account");
  return 0;
}
