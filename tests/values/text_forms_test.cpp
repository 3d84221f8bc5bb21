#include "vantrex/values/text_forms.h"

#include <algorithm>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "support/naive.h"
#include "support/random_tree.h"
#include "support/table.h"
#include "vantrex/values/snapshot.h"

namespace vantrex::values {
namespace {

using tests::naive::json_text;

// The same tree with the fields of every object in another order.
JsonValue shuffled(const JsonValue& value, tests::Random& random) {
  if (const JsonList* list = value.list()) {
    JsonList copy;
    for (const JsonValue& item : *list) copy.push_back(shuffled(item, random));
    return copy;
  }
  if (value.object() == nullptr) return value;
  std::vector<const JsonField*> fields;
  for (const JsonField& field : *value.object()) {
    fields.insert(fields.begin() + static_cast<std::ptrdiff_t>(random.below(fields.size() + 1)), &field);
  }
  JsonObject copy;
  for (const JsonField* field : fields) copy.set(field->key, shuffled(field->value, random));
  return copy;
}

TEST(TextForms, EqualTheNaiveWriting) {
  for (std::uint64_t seed = 0; seed < 5000; ++seed) {
    tests::Random random(seed);
    const JsonValue value = random_value(random, tests::Domain::any, 6);
    const std::string text = compact_text(value);
    ASSERT_EQ(text, json_text(value)) << "seed " << seed;
    ASSERT_EQ(compact_size(value), text.size()) << text;
    ASSERT_EQ(canonical_text(value), json_text(value, true)) << text;
    ASSERT_EQ(canonical_text(shuffled(value, random)), canonical_text(value)) << text;
    const JsonValue copy = snapshot(value, NullFields::keep);
    ASSERT_EQ(copy, value) << text;
    ASSERT_EQ(json_text(copy), text);
  }
}

TEST(TextForms, SortKeysByCodePoint) {
  EXPECT_EQ(canonical_text(tests::parse(
                R"({"b":[{"z":1,"":2}],"a":{},"é":0,"B":1,"\ud834\udd1e":3,"\uffff":4,"a\n":5})")),
            "{\"B\":1,\"a\":{},\"a\\n\":5,\"b\":[{\"\":2,\"z\":1}],\"é\":0,\"\uFFFF\":4,\"\U0001D11E\":3}");
}

}  // namespace
}  // namespace vantrex::values
